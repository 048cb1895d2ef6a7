// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CredentialsFile.h"

#include <unistd.h>

#include <utility>

#include "Error.h"
#include "FileLock.h"
#include "FileReplacement.h"
#include "PasswordHash.h"

namespace QZ {

namespace {

constexpr std::size_t LARGEST_FILE = std::size_t(1) << 20;

// Of no password: what is compared for a user who is not there, so that his name takes as long to
// be refused as another's. By yescrypt, at its own idea of the effort.
constexpr const char* NOBODYS_HASH =
    "$y$j9T$DcB2xR8.7o.KC/o1OP40J.$B9LJ40hETZDQrWUkNT3ub8Cqy7j0jTp9rdXLQsqlj75";

// To be changed by who holds its lock.
std::string _textOf(const std::string& path) {
    FileContent content = readWholeFile(path, LARGEST_FILE);
    if (content.state == FileContent::Missing) {
        return {};
    }
    if (content.state == FileContent::Unreadable) {
        throwSystemError("Cannot read", path, content.error);
    }
    if (content.state != FileContent::Read) {
        throw Error("Cannot read " + path + ": it is no file of credentials");
    }
    if (content.status.st_uid != geteuid()) {
        throw Error("Cannot change " + path + ": only its owner can; run this as that user");
    }
    return std::move(content.text);
}

}  // namespace

CredentialsFile::CredentialsFile(std::string path, Log log)
    : _path(std::move(path)), _log(std::move(log)) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _readAgain();
}

std::uint64_t CredentialsFile::revision() {
    const std::lock_guard<std::mutex> lock(_mutex);
    _readAgain();
    return _revision;
}

std::optional<Credentials> CredentialsFile::_find(const std::string& user) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _readAgain();
    for (const Credentials& known : _users.users) {
        if (known.user == user) {
            return known;
        }
    }
    return std::nullopt;
}

PasswordSource::Finding CredentialsFile::check(const Login& login) {
    const std::optional<Credentials> user = _find(login.user);
    const bool isRight = matchesHash(login.password, user ? user->hash : NOBODYS_HASH);
    return isRight && user ? Finding{Finding::Right, user->rights} : Finding{};
}

std::optional<Rights> CredentialsFile::rightsOf(const std::string& user) {
    const std::optional<Credentials> known = _find(user);
    return known ? std::optional<Rights>(known->rights) : std::nullopt;
}

// Empty for none.
std::string CredentialsFile::_problem(const FileContent& content) const {
    if (content.state == FileContent::Missing || content.state == FileContent::Unreadable) {
        return "cannot read " + _path + ": " + systemErrorText(content.error);
    }
    if (content.state != FileContent::Read) {
        return _path + " is no file of credentials";
    }
    if ((content.status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        return _path + " is others' to read: chmod 600 it";
    }
    if (content.status.st_uid != geteuid() && content.status.st_uid != 0) {
        return _path + " is another user's";
    }
    return {};
}

// With the mutex held.
void CredentialsFile::_readAgain() {
    if (_read.state == FileContent::Read && isStillThere(_path, _read)) {
        return;
    }
    FileContent content = readWholeFile(_path, LARGEST_FILE);
    const bool isFirst = _revision == 0;
    const std::string problem = _problem(content);
    if (!isFirst && content.state != FileContent::Read && problem == _lastProblem) {
        return;
    }
    if (!problem.empty()) {
        _log(problem + "; nobody of it may ask");
    }
    _lastProblem = problem;
    _users = problem.empty() ? parseCredentials(content.text) : CredentialsText();
    for (const auto& bad : _users.badLines) {
        _log(_path + ", line " + std::to_string(bad.number) + " is skipped: " + bad.reason);
    }
    content.text.clear();
    _read = std::move(content);
    ++_revision;
}

void storeCredentials(const std::string& path, const std::string& user, const std::string& hash,
                      const std::optional<Rights>& rights) {
    const FileLock lock(path, FileLock::Exclusive);
    const std::string text = _textOf(path);
    Credentials stored{user, hash, Rights().with(Right::Read)};
    for (const Credentials& known : parseCredentials(text).users) {
        stored.rights = known.user == user ? known.rights : stored.rights;
    }
    stored.rights = rights.value_or(stored.rights);
    replaceFile(path, withUser(text, stored));
}

bool removeCredentials(const std::string& path, const std::string& user) {
    const FileLock lock(path, FileLock::Exclusive);
    const std::string text = _textOf(path);
    const std::string rest = withoutUser(text, user);
    if (rest == text) {
        return false;
    }
    replaceFile(path, rest);
    return true;
}

}  // namespace QZ
