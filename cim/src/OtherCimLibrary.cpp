// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <link.h>
#include <syslog.h>
#include <tavqz/OtherCimLibrary.h>

#include <cstddef>
#include <cstdio>

namespace QZ {

namespace {

int _noteOther(dl_phdr_info* object, std::size_t, void* found) {
    const std::string file = object->dlpi_name;
    // npos + 1 is where a name without a folder begins.
    if (file.compare(file.rfind('/') + 1, 15, "libpegcommon.so") != 0) {
        return 0;
    }
    *static_cast<std::string*>(found) = file;
    return 1;
}

}  // namespace

std::string otherCimLibrary() {
    std::string file;
    dl_iterate_phdr(_noteOther, &file);
    return file;
}

bool refusesOtherCimLibrary(const char* module) {
    const std::string file = otherCimLibrary();
    if (file.empty()) {
        return false;
    }
    const std::string line = std::string(module) +
                             ": built for tavqz, not for OpenPegasus, whose " + file +
                             " is loaded; build it with PEGASUS_ROOT for that server";
    (void)std::fprintf(stderr, "%s\n", line.c_str());
    // Where a server has no standard error any more.
    syslog(LOG_ERR, "%s", line.c_str());
    return true;
}

}  // namespace QZ
