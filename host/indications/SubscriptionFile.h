// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>
#include <string_view>
#include <vector>

#include "Schema.h"

namespace QZ {

// The text of a file of instances: entries of a "#pragma namespace" line and an instance in MOF.
// An entry begins with such a line and ends before the next, so that one that is damaged spoils no
// other; what stands before the first is none, unless it is a comment.
std::vector<std::string> splitEntries(std::string_view text);
// With the namespace of its path and what is not null.
std::string entryText(const Pegasus::CIMInstance& instance);

// The instance of an entry, with a path of namespace and class. Throws Error.
Pegasus::CIMInstance readEntry(const std::string& entry, const Schema& schema);

// The file itself, read once and replaced as a whole from then on. One thread at a time.
class SubscriptionFile {
public:
    static constexpr std::size_t LARGEST = std::size_t(4) << 20;

    explicit SubscriptionFile(std::string path) : _path(std::move(path)) {}

    // The file's entries; none where it is missing. Throws Error where it cannot be read.
    std::vector<std::string> read();

    // Puts these entries in the place of what was read or saved last. Throws Error: the file is as
    // it was; so it is where another process has changed it since, or it could not be read.
    void save(const std::vector<std::string>& entries);

private:
    std::string _content() const;

    std::string _path;
    std::string _text;
    bool _isRead = false;
};

}  // namespace QZ
