// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "VmConnection.h"

#include <poll.h>
#include <sys/socket.h>

#include <chrono>

namespace {

constexpr char EndOfMessage = '\xA0';
constexpr char EndOfControl = '\xA1';
constexpr char Escape = '\xAA';
constexpr char EscapedBit = 0x10;

std::string escaped(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (byte == EndOfMessage || byte == EndOfControl || byte == Escape) {
            text += Escape;
            text += static_cast<char>(byte | EscapedBit);
        } else {
            text += byte;
        }
    }
    return text;
}

std::string unescaped(const std::string& text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscaped = text[i] == Escape && i + 1 < text.size();
        bytes += isEscaped ? static_cast<char>(text[++i] & ~EscapedBit) : text[i];
    }
    return bytes;
}

char checksum(const std::string& bytes) {
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += static_cast<unsigned char>(byte);
    return static_cast<char>(0U - sum);
}

}  // namespace

VmConnection::Outcome VmConnection::send(const QZ::IpmiRequest& request, QZ::IpmiReply& reply,
                                         int milliseconds) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    std::string message = {static_cast<char>(++_sequence),
                           static_cast<char>(static_cast<unsigned>(request.function) << 2U),
                           static_cast<char>(request.command)};
    message += request.data;
    message += checksum(message);
    message = escaped(message) + EndOfMessage;
    if (::send(_socket.get(), message.data(), message.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(message.size()))
        return Outcome::Failed;
    for (;;) {
        for (std::size_t at = 0;
             (at = _received.find_first_of({EndOfMessage, EndOfControl})) != std::string::npos;) {
            const bool isMessage = _received[at] == EndOfMessage;
            const std::string frame = unescaped(_received.substr(0, at));
            _received.erase(0, at + 1);
            if (isMessage && _isReply(frame, reply))
                return Outcome::Replied;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{_socket.get(), POLLIN, 0};
        if (left <= 0 || ::poll(&waiting, 1, static_cast<int>(left)) == 0)
            return Outcome::TimedOut;
        char buffer[1024];
        const ssize_t count = ::recv(_socket.get(), buffer, sizeof buffer, 0);
        if (count <= 0)
            return Outcome::Failed;
        _received.append(buffer, static_cast<std::size_t>(count));
    }
}

bool VmConnection::_isReply(const std::string& frame, QZ::IpmiReply& reply) const {
    constexpr std::size_t Data = 4;
    if (frame.size() <= Data || checksum(frame) != 0 ||
        static_cast<unsigned char>(frame[0]) != _sequence)
        return false;
    reply.completion = static_cast<unsigned char>(frame[3]);
    reply.data = frame.substr(Data, frame.size() - Data - 1);
    return true;
}
