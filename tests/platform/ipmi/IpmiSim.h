// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "Descriptor.h"
#include "IpmiTransport.h"
#include "TemporaryFolder.h"

// OpenIPMI's simulated controller as a process of its own, which listens on loopback: on a LAN for
// ipmitool, and for us where virtual machines are connected to it.
class IpmiSim final : public QZ::IpmiTransport {
public:
    // Whether the programs are installed.
    static bool isInstalled();

    IpmiSim() = default;
    ~IpmiSim() override;
    IpmiSim(const IpmiSim&) = delete;
    IpmiSim& operator=(const IpmiSim&) = delete;

    // What it holds, before it starts.
    void fru(unsigned id, const std::string& bytes);
    void record(const std::string& bytes);

    // Throws std::runtime_error where it does not listen after ten seconds.
    void start();

    void stop();  // The process stays, and does nothing.
    void kill();

    // What ipmitool prints when it is asked over the LAN.
    std::string ipmitool(const std::string& command) const;

    std::unique_ptr<QZ::IpmiConnection> open(int milliseconds) override;

private:
    void _launch();
    QZ::Descriptor _connect() const;

    TemporaryFolder _folder;
    std::string _commands;
    unsigned _lanPort = 0;
    unsigned _port = 0;
    pid_t _process = -1;
    std::unique_ptr<QZ::IpmiConnection> _connection;
};
