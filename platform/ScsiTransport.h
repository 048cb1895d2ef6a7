// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace QZ {

// A command for a SCSI device and, after it was sent, the reply: the argument of the kernel's
// SCSI_IOCTL_SEND_COMMAND. `data` starts with the command, which the first bytes of the reply
// overwrite.
struct ScsiRequest {
    std::uint32_t inputLength = 0;   // of what follows the command in `data`
    std::uint32_t outputLength = 0;  // of the reply that there is room for
    unsigned char data[10240 - 2 * sizeof(std::uint32_t)] = {};
};
static_assert(sizeof(ScsiRequest) == 10240);

// What a disk is asked, for up to 255 bytes (SPC-4, 6.6.1): its standard data, and the page of its
// serial number (vital product data page 80h).
using ScsiCommand = unsigned char[6];
inline constexpr ScsiCommand ScsiStandardInquiry = {0x12, 0, 0, 0, 0xFF, 0};
inline constexpr ScsiCommand ScsiSerialNumberInquiry = {0x12, 1, 0x80, 0, 0xFF, 0};

// A SCSI device held open. Used by one thread at a time.
class ScsiDevice {
public:
    virtual ~ScsiDevice() = default;

    // 0 with the reply in the request, zeros after it up to the output length; another number
    // where the device or the kernel refuses.
    virtual int sendCommand(ScsiRequest& request) = 0;
};

// The one way to SCSI devices, so that a test can answer in their place. Any thread may call it.
class ScsiTransport {
public:
    virtual ~ScsiTransport() = default;

    // Null where the device cannot be opened.
    virtual std::unique_ptr<ScsiDevice> open(const std::string& path) = 0;

    // The machine's devices, unless a ScsiTransportReplacement is alive. On another machine
    // (MachinePaths::isOtherMachine) the path may name a folder of recorded replies: one file for
    // each command that was answered, named by recordedReplyName.
    static ScsiTransport& current();
};

// Puts another transport in the machine's place for as long as it lives. The transport stays the
// caller's and must outlive it. Replacements nest; they are made and ended by one thread.
class ScsiTransportReplacement {
public:
    explicit ScsiTransportReplacement(ScsiTransport& transport);
    ~ScsiTransportReplacement();
    ScsiTransportReplacement(const ScsiTransportReplacement&) = delete;
    ScsiTransportReplacement& operator=(const ScsiTransportReplacement&) = delete;

private:
    ScsiTransport* _previous;
};

// The file name of the reply to a six-byte command: its bytes in hexadecimal, "12018000ff00".
std::string recordedReplyName(const unsigned char* command);

}  // namespace QZ
