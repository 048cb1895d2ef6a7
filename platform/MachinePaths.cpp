// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachinePaths.h"

#include <cstdlib>

namespace QZ {

namespace {

std::string environment(const char* name) {
    const char* const value = secure_getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

std::string MachinePaths::root() {
    std::string folder = environment("TAVQZ_HOST_ROOT");
    while (!folder.empty() && folder.back() == '/')
        folder.pop_back();
    return folder;
}

bool MachinePaths::isOtherMachine() {
    return !root().empty();
}

std::string MachinePaths::smbiosEntryPoint() {
    return root() + "/sys/firmware/dmi/tables/smbios_entry_point";
}

std::string MachinePaths::smbiosTable() {
    return root() + "/sys/firmware/dmi/tables/DMI";
}

std::string MachinePaths::machineId() {
    return root() + "/etc/machine-id";
}

std::string MachinePaths::hostName() {
    return root() + "/etc/hostname";
}

std::string MachinePaths::hypervisorType() {
    return root() + "/sys/hypervisor/type";
}

std::string MachinePaths::hypervisorUuid() {
    return root() + "/sys/hypervisor/uuid";
}

std::string MachinePaths::cpuInfo() {
    return root() + "/proc/cpuinfo";
}

std::string MachinePaths::ideIdentify(char drive) {
    return root() + "/proc/ide/hd" + drive + "/identify";
}

std::string MachinePaths::scsiDisk(char disk) {
    return root() + "/dev/sd" + disk;
}

std::string MachinePaths::xServerConfiguration() {
    return root() + "/etc/X11/XF86Config";
}

std::string MachinePaths::dataDirectory() {
    std::string folder = environment("TAVQZ_DATA_DIR");
    if (folder.empty())
        return "/var/lib/tavqz/";
    if (folder.back() != '/')
        folder += '/';
    return folder;
}

const char* MachinePaths::libraryFormat() {
    return "../lib/%s";
}

}  // namespace QZ
