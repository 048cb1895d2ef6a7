// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Credentials.h"

#include <sys/stat.h>

#include "Error.h"
#include "FileContent.h"
#include "RandomText.h"

namespace QZ {

namespace {

constexpr std::size_t PASSWORD_BYTES = 12;
constexpr std::size_t LONGEST_FILE = 4096;

}  // namespace

std::string makePassword() {
    return randomText(PASSWORD_BYTES);
}

std::string readPassword(const std::string& file) {
    const FileContent content = readWholeFile(file, LONGEST_FILE);
    if (content.state == FileContent::Missing || content.state == FileContent::Unreadable) {
        throwSystemError("Cannot read the password file", file, content.error);
    }
    if (content.state != FileContent::Read) {
        throw Error("Cannot read the password file " + file + ": it is no short text file");
    }
    struct stat status {};
    if (stat(file.c_str(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw Error("The password file " + file + " is others' to read: chmod 600 it");
    }
    std::string password = content.text.substr(0, content.text.find_first_of("\r\n"));
    if (password.empty()) {
        throw Error("The password file " + file + " has no password in its first line");
    }
    return password;
}

}  // namespace QZ
