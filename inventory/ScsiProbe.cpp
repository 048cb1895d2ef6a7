// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ScsiProbe.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "MachinePaths.h"
#include "ScsiTransport.h"

namespace QZ {
namespace {

constexpr std::uint32_t _replyLength = 1024;

// The page's own length, and where its text starts.
constexpr std::size_t _pageLengthOffset = 3;
constexpr std::size_t _pageTextOffset = 4;

constexpr std::size_t _longestSerialNumber = 79;

constexpr int _diskCount = 26;

// The disk's reply, null where there is none. The disk is closed again.
std::unique_ptr<ScsiRequest> _ask(int index, const ScsiCommand& command) {
    // Unsigned, for any index may come: what is no letter is no disk.
    const auto letter = static_cast<char>('a' + static_cast<unsigned>(index));
    const auto disk = ScsiTransport::current().open(MachinePaths::scsiDisk(letter));
    if (disk == nullptr) {
        return nullptr;  // as nearly every letter, for which no request is made
    }
    auto request = std::make_unique<ScsiRequest>();
    request->outputLength = _replyLength;
    std::copy(std::begin(command), std::end(command), request->data);
    return disk->sendCommand(*request) == 0 ? std::move(request) : nullptr;
}

std::string _text(const unsigned char* field, std::size_t width) {
    const char* const text = reinterpret_cast<const char*>(field);
    return std::string(text, strnlen(text, width));
}

}  // namespace

int getSCSIManufacturerModel(int index, std::string& manufacturer, std::string& model) {
    const auto reply = _ask(index, ScsiStandardInquiry);
    if (!reply) {
        return 0;
    }
    manufacturer = _text(reply->data + 8, 8);
    model = _text(reply->data + 16, 16);
    return 1;
}

bool decodeSerialNumberPage(const unsigned char* page, std::size_t size, std::string& serial) {
    const std::size_t length = size > _pageLengthOffset ? page[_pageLengthOffset] : 0;
    const std::size_t end = std::min(size, _pageTextOffset + length);
    std::string text;
    for (std::size_t i = _pageTextOffset; i < end && page[i] != 0; ++i) {
        if (page[i] >= 0x80) {
            return false;
        }
        text += static_cast<char>(page[i]);
    }
    text.resize(std::min(text.size(), _longestSerialNumber));
    serial = text;
    return true;
}

int getSCSISerialNumber(int index, std::string& serial) {
    const auto reply = _ask(index, ScsiSerialNumberInquiry);
    return reply && decodeSerialNumberPage(reply->data, _replyLength, serial) ? 1 : 0;
}

void getSCSIInfo(std::vector<SCSIInfo>& disks) {
    for (int index = 0; index < _diskCount; ++index) {
        SCSIInfo disk;
        if (getSCSISerialNumber(index, disk.serialNumber) != 0) {
            (void)getSCSIManufacturerModel(index, disk.manufacturer, disk.model);
            disks.push_back(disk);
        }
    }
}

}  // namespace QZ
