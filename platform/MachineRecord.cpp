// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineRecord.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "DeviceRecord.h"
#include "Error.h"
#include "FileContent.h"
#include "FileReplacement.h"
#include "MachinePaths.h"
#include "ScsiTransport.h"
#include "System.h"
#include "Text.h"

namespace QZ {

namespace {

namespace fs = std::filesystem;

// One byte more than anybody reads: a replay, too, sees that a file goes on.
constexpr std::size_t LongestRecord = (std::size_t{16} << 20) + 1;

}  // namespace

std::string nameBelowRoot(const std::string& path) {
    return path.substr(MachinePaths::root().size() + 1);
}

void recordFile(const std::string& path, MachineRecord& record) {
    const FileContent content = readFileStart(path, LongestRecord);
    switch (content.state) {
        case FileContent::Read:
            record.files[nameBelowRoot(path)] = content.text;
            if (content.text.size() == LongestRecord)
                record.problems.push_back("Recorded the first 16 MiB of " + path + " only.");
            break;
        case FileContent::Missing:
            break;
        case FileContent::Unreadable:
            record.problems.push_back("Cannot read " + path + ": " +
                                      systemErrorText(content.error) + ".");
            break;
        case FileContent::NotRegular:
        case FileContent::TooLarge:
            record.problems.push_back("Cannot read " + path + ": it is no file of this kind.");
            break;
    }
}

namespace {

// The reply of a disk without the zeros that fill it up, which a replay adds again.
void recordReply(ScsiDevice& disk, const ScsiCommand& command, const std::string& folder,
                 MachineRecord& record) {
    constexpr std::uint32_t Longest = 1024;
    ScsiRequest request;
    request.outputLength = Longest;
    std::copy(std::begin(command), std::end(command), request.data);
    if (disk.sendCommand(request) != 0)
        return;
    std::string reply(reinterpret_cast<const char*>(request.data), Longest);
    reply.erase(reply.find_last_not_of('\0') + 1);
    record.files[folder + recordedReplyName(command)] = reply;
}

void recordDisk(const std::string& path, MachineRecord& record) {
    const auto disk = ScsiTransport::current().open(path);
    if (disk == nullptr) {
        std::error_code error;
        if (fs::exists(path, error))
            record.problems.push_back("Cannot open " + path + ".");
        return;
    }
    const std::string folder = nameBelowRoot(path) + '/';
    record.files[folder];
    recordReply(*disk, ScsiStandardInquiry, folder, record);
    recordReply(*disk, ScsiSerialNumberInquiry, folder, record);
}

}  // namespace

MachineRecord recordMachine() {
    MachineRecord record;
    for (const std::string& path :
         {MachinePaths::smbiosEntryPoint(), MachinePaths::smbiosTable(), MachinePaths::machineId(),
          MachinePaths::hypervisorType(), MachinePaths::hypervisorUuid(), MachinePaths::cpuInfo(),
          MachinePaths::xServerConfiguration()})
        recordFile(path, record);
    // The name that it has, whatever the file says.
    const std::string name = make_string(System::getName());
    if (!name.empty())
        record.files[nameBelowRoot(MachinePaths::hostName())] = name + '\n';
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        recordFile(MachinePaths::ideIdentify(letter), record);
        recordDisk(MachinePaths::scsiDisk(letter), record);
    }
    recordDevices(record);
    return record;
}

void writeMachine(const MachineFiles& files, const std::string& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder))
        throwSystemError("Cannot make", folder, error ? error.value() : ENOTDIR);
    if (!fs::is_empty(folder))
        throwSystemError("Cannot use", folder, ENOTEMPTY);
    for (const auto& [name, content] : files) {
        const fs::path path = fs::path(folder) / name;
        fs::create_directories(path.parent_path(), error);
        if (error)
            throwSystemError("Cannot make", path.parent_path(), error.value());
        if (name.back() == '@')
            fs::create_symlink(content, path.string().substr(0, path.string().size() - 1));
        else if (name.back() != '/')
            replaceFile(path, content);
    }
}

}  // namespace QZ
