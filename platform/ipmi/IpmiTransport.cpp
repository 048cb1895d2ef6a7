// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiTransport.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "Clock.h"
#include "Descriptor.h"
#include "FileContent.h"
#include "FileLock.h"
#include "IpmiDevice.h"
#include "IpmiReplies.h"
#include "MachinePaths.h"

namespace QZ {

namespace {

constexpr std::size_t LargestRecord = std::size_t{16} << 20U;

// The file of that kind, open and ours alone; one that is not open where it cannot be had.
Descriptor openLocked(const std::string& path, mode_t kind, int access, int milliseconds) {
    struct stat status {};
    // Opening what is neither may wait: a pipe does, for its other end.
    if (::stat(path.c_str(), &status) != 0 || (status.st_mode & S_IFMT) != kind)
        return Descriptor();
    Descriptor file(::open(path.c_str(), access | O_CLOEXEC | O_NONBLOCK));
    const auto longest = static_cast<unsigned>(std::max(milliseconds, 0));
    // The driver lets everybody in. Two walks at a time cancel each other's reservations.
    if (file.isOpen() && lockFile(file, FileLock::Exclusive, longest) != 0)
        return Descriptor();
    return file;
}

class RecordedController final : public IpmiConnection {
public:
    RecordedController(Descriptor file, const std::string& text)
        : _file(std::move(file)), _replies(IpmiReplies::parse(text)) {}

    Outcome send(const IpmiRequest& request, IpmiReply& reply, int milliseconds) override {
        if (_replies.hasNoReply(request)) {
            Clock::current().sleepMilliseconds(static_cast<unsigned>(std::max(milliseconds, 0)));
            return Outcome::TimedOut;
        }
        reply = _replies.find(request).value_or(IpmiReply{IpmiInvalidCommand, {}});
        return Outcome::Replied;
    }

private:
    Descriptor _file;
    IpmiReplies _replies;
};

class MachineTransport final : public IpmiTransport {
public:
    std::unique_ptr<IpmiConnection> open(int milliseconds) override {
        if (MachinePaths::isOtherMachine())
            return _openRecord(MachinePaths::managementControllerReplies(), milliseconds);
        Descriptor device =
            openLocked(MachinePaths::managementController(), S_IFCHR, O_RDWR, milliseconds);
        return device.isOpen() ? std::make_unique<IpmiDevice>(std::move(device)) : nullptr;
    }

private:
    static std::unique_ptr<IpmiConnection> _openRecord(const std::string& path, int milliseconds) {
        Descriptor file = openLocked(path, S_IFREG, O_RDONLY, milliseconds);
        const FileContent content = readWholeFile(path, LargestRecord);
        if (!file.isOpen() || content.state != FileContent::Read)
            return nullptr;
        return std::make_unique<RecordedController>(std::move(file), content.text);
    }
};

std::atomic<IpmiTransport*> _replacement{nullptr};
std::atomic<unsigned> _generation{0};

}  // namespace

IpmiTransport& IpmiTransport::current() {
    static MachineTransport machine;
    IpmiTransport* const replacement = _replacement.load();
    return replacement != nullptr ? *replacement : machine;
}

unsigned IpmiTransport::generation() {
    return _generation.load();
}

IpmiTransportReplacement::IpmiTransportReplacement(IpmiTransport& transport)
    : _previous(_replacement.exchange(&transport)) {
    ++_generation;
}

IpmiTransportReplacement::~IpmiTransportReplacement() {
    _replacement.store(_previous);
    ++_generation;
}

}  // namespace QZ
