// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <mutex>
#include <optional>

#include "CredentialsText.h"
#include "FileContent.h"
#include "PasswordSource.h"

namespace QZ {

// The users of a credentials file, which is read again when it changes. One that cannot be read, or
// that others than its owner can, lets nobody in, and the log says why; its owner is the server's
// user or root.
class CredentialsFile final : public PasswordSource {
public:
    using Log = std::function<void(const std::string& line)>;

    // Reads it, so that what is wrong with it is said at once.
    CredentialsFile(std::string path, Log log);

    Finding check(const Login& login) override;
    std::optional<Rights> rightsOf(const std::string& user) override;
    std::uint64_t revision() override;

private:
    void _readAgain();
    std::string _problem(const FileContent& content) const;
    std::optional<Credentials> _find(const std::string& user);

    const std::string _path;
    const Log _log;
    std::mutex _mutex;
    FileContent _read;  // without its text
    std::string _lastProblem;
    CredentialsText _users;
    std::uint64_t _revision = 0;
};

// Gives a user of such a file a password and rights; without rights those that he has, at first to
// read. The file is made where it is missing. Others that do the same at that time wait. Throws
// Error with file and reason, also where the file is another user's, who would lose it.
void storeCredentials(const std::string& path, const std::string& user, const std::string& hash,
                      const std::optional<Rights>& rights);

// False where there was no such user.
bool removeCredentials(const std::string& path, const std::string& user);

}  // namespace QZ
