// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CredentialsText.h"

#include <algorithm>
#include <set>

#include "PasswordHash.h"

namespace QZ {

namespace {

constexpr std::size_t LONGEST_NAME = 256;

std::string _line(const Credentials& user) {
    return user.user + ":" + user.hash + ":" + user.rights.text() + "\n";
}

std::string _userOf(const std::string& line) {
    return line.substr(0, line.find(':'));
}

// Calls visit(line without its end, number) for each.
template <class Visit>
void _visitLines(const std::string& text, const Visit& visit) {
    std::size_t number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        visit(text.substr(begin, end - begin), ++number);
        begin = end + 1;
    }
}

// Empty for a good line, which is then taken.
std::string _take(const std::string& line, std::set<std::string>& names, CredentialsText& result) {
    const std::size_t first = line.find(':');
    const std::size_t second = first == line.npos ? first : line.find(':', first + 1);
    if (second == line.npos || line.find(':', second + 1) != line.npos) {
        return "expected is name:hash:rights";
    }
    Credentials user{line.substr(0, first), line.substr(first + 1, second - first - 1), {}};
    if (!isUserName(user.user)) {
        return "that is no user's name";
    }
    if (!isPasswordHash(user.hash)) {
        return "no hash of a method that is still good stands behind the name";
    }
    const auto rights = parseRights(line.substr(second + 1));
    if (!rights) {
        return "the rights are read, write and subscribe, with commas between them";
    }
    if (!names.insert(user.user).second) {
        return "the user stands in another line above";
    }
    user.rights = *rights;
    result.users.push_back(std::move(user));
    return {};
}

}  // namespace

bool isUserName(const std::string& name) {
    return !name.empty() && name.size() <= LONGEST_NAME && name.front() != '#' &&
           std::none_of(name.begin(), name.end(), [](char c) {
               return c == ':' || c == '\x7F' || static_cast<unsigned char>(c) < ' ';
           });
}

CredentialsText parseCredentials(const std::string& text) {
    CredentialsText result;
    std::set<std::string> names;
    _visitLines(text, [&](const std::string& line, std::size_t number) {
        if (line.find_first_not_of(" \t\r") == line.npos || line.front() == '#') {
            return;
        }
        const std::string reason = _take(line, names, result);
        if (!reason.empty()) {
            result.badLines.push_back({number, reason});
        }
    });
    return result;
}

std::string withUser(const std::string& text, const Credentials& user) {
    std::string result;
    bool isThere = false;
    _visitLines(text, [&](const std::string& line, std::size_t) {
        if (_userOf(line) != user.user) {
            result.append(line).append("\n");
        } else if (!isThere) {
            result += _line(user);
            isThere = true;
        }
    });
    return isThere ? result : result + _line(user);
}

std::string withoutUser(const std::string& text, const std::string& user) {
    std::string result;
    bool isThere = false;
    _visitLines(text, [&](const std::string& line, std::size_t) {
        if (_userOf(line) == user) {
            isThere = true;
        } else {
            result.append(line).append("\n");
        }
    });
    return isThere ? result : text;
}

}  // namespace QZ
