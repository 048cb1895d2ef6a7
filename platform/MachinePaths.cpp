// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachinePaths.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace QZ {

namespace {

std::string environment(const char* name) {
    const char* const value = secure_getenv(name);
    return value != nullptr ? value : "";
}

namespace fs = std::filesystem;

// The library or program that holds this code.
fs::path codeFile() {
    Dl_info info{};
    const bool isKnown = dladdr(reinterpret_cast<const void*>(&codeFile), &info) != 0;
    // A program is known by the name that it was called by.
    const fs::path file = isKnown && info.dli_fname[0] == '/' ? info.dli_fname : "/proc/self/exe";
    std::error_code error;
    return fs::canonical(file, error);
}

std::string findMessages(const fs::path& code) {
    const fs::path below = fs::path("share") / "tavqz" / "messages";
    for (fs::path folder = code.parent_path(); folder.has_relative_path();
         folder = folder.parent_path()) {
        std::error_code error;
        if (fs::is_directory(folder / below, error))
            return (folder / below).string();
    }
    return (fs::path("/usr") / below).string();
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

std::string MachinePaths::ideFolder() {
    return root() + "/proc/ide";
}

std::string MachinePaths::ideIdentify(char drive) {
    return ideFolder() + "/hd" + drive + "/identify";
}

std::string MachinePaths::scsiDisk(char disk) {
    return root() + "/dev/sd" + disk;
}

std::string MachinePaths::managementController() {
    return root() + "/dev/ipmi0";
}

std::string MachinePaths::managementControllerReplies() {
    return managementController() + ".replies";
}

std::string MachinePaths::xServerConfiguration() {
    return root() + "/etc/X11/XF86Config";
}

std::string MachinePaths::blockDevices() {
    return root() + "/sys/block";
}

std::string MachinePaths::scsiHosts() {
    return root() + "/sys/class/scsi_host";
}

std::string MachinePaths::scsiDevices() {
    return root() + "/sys/class/scsi_device";
}

std::string MachinePaths::raidVolumes() {
    return root() + "/sys/class/raid_devices";
}

std::string MachinePaths::pciNames() {
    return root() + "/usr/share/misc/pci.ids";
}

std::string MachinePaths::cimRepository() {
    return root() + "/var/lib/Pegasus/repository";
}

std::string MachinePaths::simulatedServiceProcessors(const std::string& below) {
    return below + "/etc/tavqz/service-processor.txt";
}

std::string MachinePaths::dataDirectory() {
    std::string folder = environment("TAVQZ_DATA_DIR");
    if (folder.empty())
        return "/var/lib/tavqz/";
    if (folder.back() != '/')
        folder += '/';
    return folder;
}

std::string MachinePaths::messageFolder() {
    // Where the code lies does not change while it is loaded.
    static const std::string found = findMessages(codeFile());
    return found;
}

const char* MachinePaths::libraryFormat() {
    return "../lib/%s";
}

}  // namespace QZ
