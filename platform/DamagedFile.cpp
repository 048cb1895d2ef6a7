// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DamagedFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "Clock.h"
#include "DateTime.h"
#include "Error.h"

namespace QZ {

namespace {

// Now, as "20270131T083000" in local time.
std::string timeStamp() {
    const DateTime now(Clock::current().seconds(), DateTime::CalendarDate | DateTime::TimeOfDay);
    std::string stamp = now.toString().substr(0, 19);
    stamp.erase(std::remove_if(stamp.begin(), stamp.end(),
                               [](char sign) { return sign == '-' || sign == ':'; }),
                stamp.end());
    return stamp;
}

bool exists(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

}  // namespace

DamagedFile::DamagedFile(const std::string& path) : _path(path) {
    const std::string stem = path + ".damaged-" + timeStamp();
    _aside = stem;
    for (int number = 2; exists(_aside); ++number)
        _aside = stem + '-' + std::to_string(number);
    _isMoved = ::link(path.c_str(), _aside.c_str()) != 0;
    if (_isMoved && ::rename(path.c_str(), _aside.c_str()) != 0)
        throwSystemError("Cannot set aside the damaged file", path, errno);
}

DamagedFile::~DamagedFile() {
    if (_isKept)
        return;
    if (_isMoved)
        static_cast<void>(::rename(_aside.c_str(), _path.c_str()));
    else
        ::unlink(_aside.c_str());
}

}  // namespace QZ
