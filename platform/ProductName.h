// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// A product name as firmware carries it, such as "Example Server 2U -[EX2100-7A]-": the text of the
// last group in square brackets is the architected part, what is around it, without the dashes
// that touch the brackets, the unarchitected one. Both are trimmed of blanks.
class ProductName {
public:
    explicit ProductName(const std::string& name);

    // Empty without brackets.
    const std::string& getArchitectedData() const { return _architected; }
    const std::string& getUnarchitectedData() const { return _unarchitected; }

private:
    std::string _architected;
    std::string _unarchitected;
};

}  // namespace QZ
