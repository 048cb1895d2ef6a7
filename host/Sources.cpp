// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Sources.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "Error.h"
#include "FileContent.h"
#include "MachinePaths.h"

namespace QZ {

namespace {

// No table of a machine's is as large as that.
constexpr std::size_t _sourceLimit = std::size_t(16) << 20;

std::string _sentence(const std::string& source, const std::string& path,
                      const std::string& reason) {
    return "No " + source + ": " + path + ": " + reason;
}

// Empty where the file can be read.
std::string _fileReason(const std::string& path) {
    const FileContent content = readWholeFile(path, _sourceLimit);
    switch (content.state) {
        case FileContent::Read:
            return content.text.empty() ? "empty" : "";
        case FileContent::NotRegular:
            return "not a regular file";
        case FileContent::TooLarge:
            return "too large";
        default:
            return systemErrorText(content.error);
    }
}

std::string _accessReason(const std::string& path, int mode) {
    return access(path.c_str(), mode) == 0 ? "" : systemErrorText(errno);
}

// What there is of the controller: its device, or its replies of another machine.
std::string _controllerReason() {
    if (access(MachinePaths::managementControllerReplies().c_str(), R_OK) == 0 ||
        access(MachinePaths::managementController().c_str(), R_OK | W_OK) == 0) {
        return "";
    }
    const int error = errno;
    const char* const remedy =
        error == ENOENT
            ? "; if the machine has one, \"modprobe -a ipmi_si ipmi_devintf\" loads the "
              "drivers that make it"
        : error == EACCES ? "; root may ask it"
                          : "";
    return systemErrorText(error) + remedy;
}

std::string _libraryPath(const char* name) {
    std::string path(std::size_t(std::snprintf(nullptr, 0, MachinePaths::libraryFormat(), name)),
                     '\0');
    (void)std::snprintf(path.data(), path.size() + 1, MachinePaths::libraryFormat(), name);
    return path;
}

}  // namespace

std::vector<std::string> missingSources() {
    std::vector<std::string> sentences;
    const auto check = [&](const char* source, const std::string& path, const std::string& reason) {
        if (!reason.empty()) {
            sentences.push_back(_sentence(source, path, reason));
        }
    };
    const std::string entryPoint = MachinePaths::smbiosEntryPoint();
    const std::string table = MachinePaths::smbiosTable();
    const std::string entryPointReason = _fileReason(entryPoint);
    if (entryPointReason.empty()) {
        check("SMBIOS tables", table, _fileReason(table));
    } else {
        check("SMBIOS tables", entryPoint, entryPointReason);
    }
    const std::string machineId = MachinePaths::machineId();
    check("machine id", machineId, _fileReason(machineId));
    const std::string data = MachinePaths::dataDirectory();
    check("data folder", data, _accessReason(data, R_OK | W_OK | X_OK));
    const std::string library = _libraryPath("libtav_shrdevice.so");
    check("service-processor library", library, _accessReason(library, R_OK));
    check("management controller", MachinePaths::managementController(), _controllerReason());
    return sentences;
}

}  // namespace QZ
