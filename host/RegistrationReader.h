// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "MofCursor.h"
#include "Registration.h"

namespace QZ {

// The registration of a model that lies in its folder, read no further than to the first line that
// answers what is asked: a command asks for one class, and reading all of it takes longer than most
// providers do. Files that name none of the registration's classes are not looked at any closer.
// Any thread may ask.
class RegistrationReader {
public:
    // Nothing is read yet.
    explicit RegistrationReader(std::string folder) : _folder(std::move(folder)) {}

    // As Registration::instanceProvider(), valid as long as this object. Throws Error where the
    // folder cannot be read, and tries that again the next time; Error where a file cannot be read
    // and MofError for what is wrong before the answer, also whenever the answer is none of those
    // before it.
    const ProviderEntry* instanceProvider(const std::string& nameSpace,
                                          const std::string& className);

private:
    // Takes over the next declaration; false where there is no more.
    bool _readMore();
    // Opens the next file of the registration; false where there is none.
    bool _open();
    void _readDeclaration();

    const std::string _folder;
    std::mutex _mutex;
    std::optional<std::vector<std::string>> _files;  // that are still to read, the next one last
    std::string _text;                               // of the file that is open
    std::optional<MofCursor> _cursor;                // none: no file is open
    std::exception_ptr _failure;                     // that ended the reading
    Registration _registration;
};

}  // namespace QZ
