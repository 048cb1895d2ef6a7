// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// A UUID as bytes in the order in which its text shows them.
class Uuid {
public:
    explicit Uuid(std::vector<unsigned char> bytes);

    // 8-4-4-4-12 in upper case. Empty where firmware gives no identity: fewer than 16 bytes, all 00
    // or all FF. Bytes beyond 16 are ignored.
    std::string toString() const;

private:
    std::vector<unsigned char> _bytes;
};

}  // namespace QZ
