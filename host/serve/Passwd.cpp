// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Passwd.h"

#include "CredentialsFile.h"
#include "MachinePaths.h"
#include "PasswordHash.h"
#include "PasswordPrompt.h"
#include "Product.h"

namespace QZ {

namespace {

// In the data folder.
constexpr const char* CREDENTIALS_FILE = "credentials";

std::optional<Rights> _rights(const PasswdRequest& request) {
    if (request.rights.empty()) {
        return std::nullopt;
    }
    const std::optional<Rights> rights = parseRights(request.rights);
    if (!rights) {
        throw UsageError(
            "--rights: read, write and subscribe are expected, with commas between them");
    }
    return rights;
}

}  // namespace

ExitStatus changePassword(const PasswdRequest& request) {
    if (!isUserName(request.user)) {
        throw UsageError("The user's name has a \":\", begins with \"#\", or is too long or empty");
    }
    const std::string file =
        request.file.empty() ? MachinePaths::dataDirectory() + CREDENTIALS_FILE : request.file;
    if (request.isDeletion) {
        if (!removeCredentials(file, request.user)) {
            throw Error("There is no user " + request.user + " in " + file);
        }
        return EXIT_OK;
    }
    const std::optional<Rights> rights = _rights(request);
    const std::string hash = hashPassword(readNewPassword(request.user));
    std::string reason;
    if (request.file.empty() && !Product::makeDataDirectory(reason)) {
        throw Error(reason);
    }
    storeCredentials(file, request.user, hash, rights);
    return EXIT_OK;
}

}  // namespace QZ
