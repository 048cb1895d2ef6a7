// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// A damaged file, set aside as PATH.damaged-YYYYMMDDTHHMMSS before it is overwritten, with a number
// behind where that name is taken. Until keep() it is put back when this object goes; meanwhile the
// first name stays, too, where the file system allows two.
class DamagedFile {
public:
    // Throws Error; the file is then where it was.
    explicit DamagedFile(const std::string& path);
    ~DamagedFile();
    DamagedFile(const DamagedFile&) = delete;
    DamagedFile& operator=(const DamagedFile&) = delete;

    // Its replacement stands.
    void keep() { _isKept = true; }

private:
    std::string _path;
    std::string _aside;
    bool _isMoved = false;
    bool _isKept = false;
};

}  // namespace QZ
