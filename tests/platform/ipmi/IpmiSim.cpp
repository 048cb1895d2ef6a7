// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiSim.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <thread>

#include "IpmiText.h"
#include "VmConnection.h"

namespace {

sockaddr_in loopback(unsigned port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

// One that nobody listens on now.
unsigned freePort(int kind) {
    const QZ::Descriptor socket(::socket(AF_INET, kind | SOCK_CLOEXEC, 0));
    sockaddr_in address = loopback(0);
    socklen_t length = sizeof address;
    if (::bind(socket.get(), reinterpret_cast<sockaddr*>(&address), length) != 0 ||
        ::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &length) != 0)
        throw std::runtime_error("no free port on loopback");
    return ntohs(address.sin_port);
}

std::string hexadecimal(const std::string& bytes) {
    const std::string digits = QZ::decodeIpmiText(QZ::IpmiEncoding::Binary, bytes);
    std::string text;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        text += " 0x";
        text += digits.substr(at, 2);
    }
    return text;
}

// One that somebody else keeps.
class SharedConnection final : public QZ::IpmiConnection {
public:
    explicit SharedConnection(QZ::IpmiConnection& connection) : _connection(connection) {}

    Outcome send(const QZ::IpmiRequest& request, QZ::IpmiReply& reply, int milliseconds) override {
        return _connection.send(request, reply, milliseconds);
    }

private:
    QZ::IpmiConnection& _connection;
};

bool isProgram(const char* name) {
    return ::access((std::string("/usr/bin/") + name).c_str(), X_OK) == 0;
}

}  // namespace

bool IpmiSim::isInstalled() {
    return isProgram("ipmi_sim") && isProgram("ipmitool");
}

IpmiSim::~IpmiSim() {
    kill();
}

void IpmiSim::fru(unsigned id, const std::string& bytes) {
    const std::string name = std::to_string(id);
    const std::string path = _folder.write("fru" + name, bytes);
    _commands += "mc_add_fru_data 0x20 " + name + " " + std::to_string(bytes.size()) +
                 " file 0 \"" + path + "\"\n";
}

void IpmiSim::record(const std::string& bytes) {
    _commands += "main_sdr_add 0x20" + hexadecimal(bytes) + "\n";
}

void IpmiSim::start() {
    for (int attempt = 0; attempt < 3; ++attempt) {
        _launch();
        for (int wait = 0; wait < 300; ++wait) {
            QZ::Descriptor socket = _connect();
            if (socket.isOpen()) {
                // Kept: it turns away who comes before it saw the last one go.
                _connection = std::make_unique<VmConnection>(std::move(socket));
                return;
            }
            if (::waitpid(_process, nullptr, WNOHANG) == _process) {
                _process = -1;  // Somebody else took a port of its.
                break;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        kill();
    }
    throw std::runtime_error("ipmi_sim does not listen");
}

void IpmiSim::_launch() {
    _lanPort = freePort(SOCK_DGRAM);
    _port = freePort(SOCK_STREAM);
    const std::string lan = _folder.write(
        "lan.conf",
        "name \"tavqz\"\nset_working_mc 0x20\nstartlan 1\naddr 127.0.0.1 " +
            std::to_string(_lanPort) +
            "\npriv_limit admin\nallowed_auths_admin none md2 md5 straight\n"
            "guid a123456789abcdefa123456789abcdef\nendlan\nserial 15 127.0.0.1 " +
            std::to_string(_port) +
            " codec VM\nuser 2 true \"tavqz\" \"tavqz\" admin 10 none md2 md5 straight\n");
    const std::string commands =
        _folder.write("commands",
                      "mc_setbmc 0x20\n"
                      "mc_add 0x20 0 no-device-sdrs 0x23 9 0x45 0x9f 0x1291 0xf02 persist_sdr\n"
                      "sel_enable 0x20 100 0x0a\n"
                      "sensor_add 0x20 0 0 35 0x6f event-only\n" +
                          _commands + "mc_enable 0x20\n");
    std::filesystem::remove_all(_folder.file("state"));
    std::filesystem::create_directory(_folder.file("state"));
    const std::string state = _folder.file("state");
    _process = ::fork();
    if (_process != 0)
        return;
    for (const int descriptor : {0, 1, 2})
        ::dup2(::open("/dev/null", O_RDWR), descriptor);
    ::execl("/usr/bin/ipmi_sim", "ipmi_sim", "-c", lan.c_str(), "-f", commands.c_str(), "-s",
            state.c_str(), "-n", nullptr);
    ::_exit(127);
}

void IpmiSim::stop() {
    ::kill(_process, SIGSTOP);
}

void IpmiSim::kill() {
    if (_process <= 0)
        return;
    ::kill(_process, SIGKILL);
    ::waitpid(_process, nullptr, 0);
    _process = -1;
}

std::string IpmiSim::ipmitool(const std::string& command) const {
    const std::string line = "LC_ALL=C ipmitool -I lanplus -C 3 -H 127.0.0.1 -p " +
                             std::to_string(_lanPort) + " -U tavqz -P tavqz " + command + " 2>&1";
    // The words are this file's and the tests'.
    FILE* const pipe = ::popen(line.c_str(), "r");  // NOLINT(cert-env33-c)
    if (pipe == nullptr)
        throw std::runtime_error("cannot run ipmitool");
    std::string output;
    char buffer[4096];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        output.append(buffer, count);
    ::pclose(pipe);
    return output;
}

QZ::Descriptor IpmiSim::_connect() const {
    QZ::Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address = loopback(_port);
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return QZ::Descriptor();
    return socket;
}

std::unique_ptr<QZ::IpmiConnection> IpmiSim::open(int) {
    return _process > 0 ? std::make_unique<SharedConnection>(*_connection) : nullptr;
}
