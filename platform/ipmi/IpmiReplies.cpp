// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiReplies.h"

#include <cstdio>
#include <sstream>

#include "IpmiText.h"

namespace QZ {

namespace {

constexpr const char* NoReply = "none";

std::string formatBytes(const std::string& bytes) {
    const std::string digits = decodeIpmiText(IpmiEncoding::Binary, bytes);
    std::string text;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        text += ' ';
        text += digits.substr(at, 2);
    }
    return text;
}

bool isByte(const std::string& word) {
    return word.size() == 2 &&
           word.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

// Nothing where a word is none of two digits.
std::optional<std::string> parseBytes(std::istream& words) {
    constexpr int Hexadecimal = 16;
    std::string bytes;
    for (std::string word; words >> word;) {
        if (!isByte(word))
            return std::nullopt;
        bytes += static_cast<char>(std::stoi(word, nullptr, Hexadecimal));
    }
    return bytes;
}

}  // namespace

std::string IpmiReplies::requestText(const IpmiRequest& request) {
    char start[32] = "";
    if (request.address != BmcAddress || request.lun != 0)
        static_cast<void>(std::snprintf(start, sizeof start, "%02x.%02x.%02x ", request.address,
                                        request.channel, request.lun));
    std::string bytes = {static_cast<char>(request.function), static_cast<char>(request.command)};
    bytes += request.data;
    return start + formatBytes(bytes).substr(1);
}

std::optional<IpmiRequest> IpmiReplies::parseRequest(const std::string& text) {
    constexpr std::size_t AddressLength = 8;
    IpmiRequest request;
    std::string commandText = text;
    if (text.size() > AddressLength && text[2] == '.' && text[5] == '.') {
        std::istringstream words(text.substr(0, 2) + ' ' + text.substr(3, 2) + ' ' +
                                 text.substr(6, 2));
        const std::optional<std::string> address = parseBytes(words);
        if (!address || address->size() != 3)
            return std::nullopt;
        request.address = static_cast<unsigned char>((*address)[0]);
        request.channel = static_cast<unsigned char>((*address)[1]);
        request.lun = static_cast<unsigned char>((*address)[2]);
        commandText = text.substr(AddressLength);
    }
    std::istringstream words(commandText);
    const std::optional<std::string> bytes = parseBytes(words);
    if (!bytes || bytes->size() < 2)
        return std::nullopt;
    request.function = static_cast<IpmiFunction>((*bytes)[0]);
    request.command = static_cast<unsigned char>((*bytes)[1]);
    request.data = bytes->substr(2);
    return request;
}

IpmiReplies IpmiReplies::parse(const std::string& text) {
    IpmiReplies replies;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line.erase(std::min(line.find('#'), line.size()));
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        const std::optional<IpmiRequest> request = parseRequest(line.substr(0, equals));
        if (!request)
            continue;
        std::istringstream words(line.substr(equals + 1));
        std::string first;
        if (words >> first && first == NoReply) {
            replies._entries[requestText(*request)] = std::nullopt;
            continue;
        }
        words = std::istringstream(line.substr(equals + 1));
        const std::optional<std::string> bytes = parseBytes(words);
        if (bytes && !bytes->empty())
            replies.add(*request, {static_cast<unsigned char>(bytes->front()), bytes->substr(1)});
    }
    return replies;
}

std::string IpmiReplies::text() const {
    std::string text;
    for (const auto& [request, reply] : _entries) {
        text += request;
        text += " =";
        if (reply) {
            text += formatBytes(std::string(1, static_cast<char>(reply->completion)));
            text += formatBytes(reply->data);
        } else {
            text += ' ';
            text += NoReply;
        }
        text += '\n';
    }
    return text;
}

void IpmiReplies::add(const IpmiRequest& request, const IpmiReply& reply) {
    _entries[requestText(request)] = reply;
}

std::optional<IpmiReply> IpmiReplies::find(const IpmiRequest& request) const {
    const auto entry = _entries.find(requestText(request));
    return entry != _entries.end() ? entry->second : std::nullopt;
}

bool IpmiReplies::hasNoReply(const IpmiRequest& request) const {
    const auto entry = _entries.find(requestText(request));
    return entry != _entries.end() && !entry->second;
}

}  // namespace QZ
