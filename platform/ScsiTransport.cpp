// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ScsiTransport.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "Descriptor.h"
#include "FileContent.h"
#include "MachinePaths.h"

namespace QZ {

namespace {

// Whatever its age, the one request that sends a command through the disk's own device file.
constexpr unsigned long SendCommandRequest = 1;

class MachineDevice final : public ScsiDevice {
public:
    explicit MachineDevice(Descriptor device) : _device(std::move(device)) {}

    int sendCommand(ScsiRequest& request) override {
        return ::ioctl(_device.get(), SendCommandRequest, &request);
    }

private:
    Descriptor _device;
};

class RecordedDevice final : public ScsiDevice {
public:
    explicit RecordedDevice(std::string folder) : _folder(std::move(folder)) {}

    int sendCommand(ScsiRequest& request) override {
        const std::size_t length = std::min<std::size_t>(request.outputLength, sizeof request.data);
        const FileContent reply =
            readWholeFile(_folder + '/' + recordedReplyName(request.data), length);
        if (reply.state != FileContent::Read)
            return -1;
        std::fill_n(request.data, length, static_cast<unsigned char>(0));
        std::copy(reply.text.begin(), reply.text.end(), request.data);
        return 0;
    }

private:
    std::string _folder;
};

class MachineTransport final : public ScsiTransport {
public:
    std::unique_ptr<ScsiDevice> open(const std::string& path) override {
        struct stat status {};
        if (::stat(path.c_str(), &status) != 0)
            return nullptr;
        if (S_ISDIR(status.st_mode) && MachinePaths::isOtherMachine())
            return std::make_unique<RecordedDevice>(path);
        // Opening what is no disk may wait: a pipe does, for its other end.
        if (!S_ISBLK(status.st_mode))
            return nullptr;
        Descriptor device(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        return device.isOpen() ? std::make_unique<MachineDevice>(std::move(device)) : nullptr;
    }
};

std::atomic<ScsiTransport*> _replacement{nullptr};

}  // namespace

ScsiTransport& ScsiTransport::current() {
    static MachineTransport machine;
    ScsiTransport* const replacement = _replacement.load();
    return replacement != nullptr ? *replacement : machine;
}

ScsiTransportReplacement::ScsiTransportReplacement(ScsiTransport& transport)
    : _previous(_replacement.exchange(&transport)) {}

ScsiTransportReplacement::~ScsiTransportReplacement() {
    _replacement.store(_previous);
}

std::string recordedReplyName(const unsigned char* command) {
    constexpr std::size_t CommandLength = 6;
    constexpr char digits[] = "0123456789abcdef";
    std::string name;
    for (std::size_t i = 0; i < CommandLength; ++i) {
        name += digits[command[i] >> 4U];
        name += digits[command[i] & 0xFU];
    }
    return name;
}

}  // namespace QZ
