// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineSanitizer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "MachinePaths.h"
#include "ScsiTransport.h"

using namespace QZ;

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

}  // namespace

// The same bytes as each of the files that hold what is replaced: sizes stay, what is replaced
// depends on the key alone.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string page =
        MachinePaths::scsiDisk('a') + '/' + recordedReplyName(ScsiSerialNumberInquiry);
    MachineFiles before;
    for (const std::string& path :
         {MachinePaths::smbiosTable(), MachinePaths::hostName(), MachinePaths::ideIdentify('a'),
          page, MachinePaths::blockDevices() + "/vda/serial",
          MachinePaths::scsiDevices() + "/0:0:0:0/device/vpd_pg80",
          MachinePaths::scsiHosts() + "/host0/vpd"})
        before[path.substr(1)] = bytes;

    MachineFiles after = before;
    sanitizeMachine(after, "key");
    MachineFiles again = before;
    sanitizeMachine(again, "key");
    require(after == again);
    require(after.size() == before.size());
    for (const auto& [name, content] : after)
        require(content.size() == before.at(name).size());
    return 0;
}
