// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Descriptor.h"
#include "IpmiTransport.h"

namespace QZ {

// The controller behind the kernel's driver (linux/ipmi.h), whose device file it owns.
class IpmiDevice final : public IpmiConnection {
public:
    explicit IpmiDevice(Descriptor device) : _device(std::move(device)) {}

    Outcome send(const IpmiRequest& request, IpmiReply& reply, int milliseconds) override;

private:
    bool _send(const IpmiRequest& request);
    bool _receive(IpmiReply& reply);

    Descriptor _device;
    long _messageId = 0;
};

}  // namespace QZ
