// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "GroupRights.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace QZ {

namespace {

// For the answer of a database; entries beyond are nobody's.
constexpr std::size_t LARGEST_ENTRY = std::size_t(1) << 20;
constexpr int MOST_GROUPS = 65536;

struct User {
    std::string name;
    gid_t group;
};

// Calls ask(buffer, size), which answers with an errno, until the buffer is large enough.
template <class Ask>
void _withBuffer(const Ask& ask) {
    std::vector<char> buffer(4096);
    while (ask(buffer.data(), buffer.size()) == ERANGE && buffer.size() < LARGEST_ENTRY) {
        buffer.resize(2 * buffer.size());
    }
}

template <class Lookup>
std::optional<User> _userBy(const Lookup& lookup) {
    std::optional<User> user;
    _withBuffer([&](char* buffer, std::size_t size) {
        passwd entry{};
        passwd* found = nullptr;
        const int error = lookup(&entry, buffer, size, &found);
        if (error == 0 && found) {
            user = User{found->pw_name, found->pw_gid};
        }
        return error;
    });
    return user;
}

std::optional<User> _userNamed(const std::string& name) {
    return _userBy([&name](passwd* entry, char* buffer, std::size_t size, passwd** found) {
        return getpwnam_r(name.c_str(), entry, buffer, size, found);
    });
}

std::optional<User> _userNumbered(uid_t number) {
    return _userBy([number](passwd* entry, char* buffer, std::size_t size, passwd** found) {
        return getpwuid_r(number, entry, buffer, size, found);
    });
}

std::vector<gid_t> _groupsOf(const User& user) {
    int count = 64;
    std::vector<gid_t> groups(std::size_t(count), 0);
    while (getgrouplist(user.name.c_str(), user.group, groups.data(), &count) < 0) {
        if (count > MOST_GROUPS) {
            return {};
        }
        groups.resize(std::size_t(count));
    }
    groups.resize(std::size_t(count));
    return groups;
}

std::string _groupName(gid_t number) {
    std::string name;
    _withBuffer([&](char* buffer, std::size_t size) {
        group entry{};
        group* found = nullptr;
        const int error = getgrgid_r(number, &entry, buffer, size, &found);
        if (error == 0 && found) {
            name = found->gr_name;
        }
        return error;
    });
    return name;
}

Rights _rightsOf(const User& user, const RightGroups& groups) {
    Rights rights;
    for (const gid_t number : _groupsOf(user)) {
        const std::string name = _groupName(number);
        if (name.empty()) {
            continue;
        }
        rights = name == groups.readers ? rights.with(Right::Read) : rights;
        rights = name == groups.writers ? rights.with(Right::Write) : rights;
        rights = name == groups.subscribers ? rights.with(Right::Subscribe) : rights;
    }
    return rights;
}

}  // namespace

std::optional<Rights> rightsOfUser(const std::string& user, const RightGroups& groups) {
    const std::optional<User> known = _userNamed(user);
    return known ? std::optional<Rights>(_rightsOf(*known, groups)) : std::nullopt;
}

Caller localCaller(uid_t number, const RightGroups& groups) {
    const std::optional<User> known = _userNumbered(number);
    Caller caller{known ? known->name : "uid " + std::to_string(number), {}, Caller::LocalUser};
    if (number == 0 || number == geteuid()) {
        caller.rights = Rights::all();
    } else if (known) {
        caller.rights = _rightsOf(*known, groups);
    }
    return caller;
}

}  // namespace QZ
