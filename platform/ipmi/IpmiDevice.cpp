// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiDevice.h"

#include <linux/ipmi.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>

#include "Clock.h"

namespace QZ {

namespace {

int millisecondsUntil(const timespec& end) {
    const timespec now = Clock::machineDeadline(0);
    const std::int64_t left = (static_cast<std::int64_t>(end.tv_sec) - now.tv_sec) * 1000 +
                              (end.tv_nsec - now.tv_nsec) / 1000000;
    return static_cast<int>(std::max<std::int64_t>(left, 0));
}

}  // namespace

IpmiConnection::Outcome IpmiDevice::send(const IpmiRequest& request, IpmiReply& reply,
                                         int milliseconds) {
    const timespec end = Clock::machineDeadline(static_cast<unsigned>(milliseconds));
    if (!_send(request))
        return Outcome::Failed;
    for (;;) {
        pollfd waiting{_device.get(), POLLIN, 0};
        const int ready = ::poll(&waiting, 1, millisecondsUntil(end));
        if (ready < 0 && errno != EINTR)
            return Outcome::Failed;
        if (ready > 0 && (waiting.revents & POLLIN) == 0)
            return Outcome::Failed;
        // Replies to a command that was given up earlier, and events, are passed over.
        if (ready > 0 && _receive(reply))
            return Outcome::Replied;
        if (millisecondsUntil(end) == 0)
            return Outcome::TimedOut;
    }
}

bool IpmiDevice::_send(const IpmiRequest& request) {
    ipmi_system_interface_addr own{};
    own.addr_type = IPMI_SYSTEM_INTERFACE_ADDR_TYPE;
    own.channel = IPMI_BMC_CHANNEL;
    own.lun = request.lun;
    ipmi_ipmb_addr bus{};
    bus.addr_type = IPMI_IPMB_ADDR_TYPE;
    bus.channel = request.channel;
    bus.slave_addr = request.address;
    bus.lun = request.lun;

    std::string data = request.data;
    ipmi_req message{};
    const bool isOwn = request.address == BmcAddress;
    message.addr =
        isOwn ? reinterpret_cast<unsigned char*>(&own) : reinterpret_cast<unsigned char*>(&bus);
    message.addr_len = isOwn ? sizeof own : sizeof bus;
    message.msgid = ++_messageId;
    message.msg.netfn = static_cast<unsigned char>(request.function);
    message.msg.cmd = request.command;
    message.msg.data_len = static_cast<unsigned short>(data.size());
    message.msg.data = reinterpret_cast<unsigned char*>(data.data());
    return ::ioctl(_device.get(), IPMICTL_SEND_COMMAND, &message) == 0;
}

// True when what came was the reply to the last command.
bool IpmiDevice::_receive(IpmiReply& reply) {
    unsigned char data[IPMI_MAX_MSG_LENGTH] = {};
    ipmi_addr sender{};
    ipmi_recv message{};
    message.addr = reinterpret_cast<unsigned char*>(&sender);
    message.addr_len = sizeof sender;
    message.msg.data = data;
    message.msg.data_len = sizeof data;
    // A message longer than the standard allows is cut, and taken as far as it goes.
    if (::ioctl(_device.get(), IPMICTL_RECEIVE_MSG_TRUNC, &message) != 0 && errno != EMSGSIZE)
        return false;
    if (message.recv_type != IPMI_RESPONSE_RECV_TYPE || message.msgid != _messageId ||
        message.msg.data_len == 0)
        return false;
    const std::size_t length = std::min<std::size_t>(message.msg.data_len, sizeof data);
    reply.completion = data[0];
    reply.data.assign(reinterpret_cast<const char*>(data) + 1, length - 1);
    return true;
}

}  // namespace QZ
