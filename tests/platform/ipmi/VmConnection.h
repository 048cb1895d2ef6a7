// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Descriptor.h"
#include "IpmiTransport.h"

// Speaks with a simulated controller as QEMU's ipmi-bmc-extern does: sequence number, function and
// unit, command, data and checksum, ended by a byte that stands nowhere else.
class VmConnection final : public QZ::IpmiConnection {
public:
    explicit VmConnection(QZ::Descriptor socket) : _socket(std::move(socket)) {}

    Outcome send(const QZ::IpmiRequest& request, QZ::IpmiReply& reply, int milliseconds) override;

private:
    bool _isReply(const std::string& frame, QZ::IpmiReply& reply) const;

    QZ::Descriptor _socket;
    std::string _received;
    unsigned char _sequence = 0;
};
