// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <vector>

#include "ControllerRecord.h"
#include "FruDecoder.h"
#include "IpmiBytes.h"
#include "IpmiReplies.h"
#include "MachinePaths.h"
#include "Pseudonyms.h"
#include "SmBiosDecoder.h"

namespace QZ {

namespace {

constexpr std::size_t GuidLength = 16;
constexpr std::size_t HeaderLength = 8;

std::string nameOf(const std::string& path) {
    return path.substr(MachinePaths::root().size() + 1);
}

bool isCommand(const IpmiRequest& request, IpmiFunction function, unsigned char command) {
    return request.function == function && request.command == command;
}

// The machine's UUID as its firmware tables store it; empty where they do not.
std::string firmwareUuid(const MachineFiles& files) {
    constexpr unsigned char Offset = 8;
    const auto table = files.find(nameOf(MachinePaths::smbiosTable()));
    std::string uuid;
    if (table == files.end())
        return uuid;
    for (const SmBios::Table& structure : decodeSmBios({}, table->second).tables) {
        if (structure.getType() != 1 || structure.getLength() < Offset + GuidLength)
            continue;
        for (unsigned i = 0; i < GuidLength; ++i)
            uuid += static_cast<char>(structure.getByte(Offset + i));
        break;
    }
    return uuid;
}

// The data of one unit, put together of the replies that brought a piece each.
class Unit {
public:
    void add(std::size_t offset, IpmiReply& reply) {
        const std::string bytes = reply.data.substr(1);
        _bytes.resize(std::max(_bytes.size(), offset + bytes.size()), '\xFF');
        _bytes.replace(offset, bytes.size(), bytes);
        _pieces.emplace_back(offset, &reply);
    }

    void sanitize(const Pseudonyms& pseudonyms) {
        const FruInventory fru = decodeFru(_bytes);
        std::string clean = _bytes;
        const auto replace = [&](const FruField& field) { _replace(clean, field, pseudonyms); };
        std::vector<const FruArea*> areas;
        if (fru.chassis) {
            replace(fru.chassis->serialNumber);
            areas.push_back(&*fru.chassis);
        }
        if (fru.board) {
            replace(fru.board->serialNumber);
            areas.push_back(&*fru.board);
        }
        if (fru.product) {
            replace(fru.product->serialNumber);
            replace(fru.product->assetTag);
            areas.push_back(&*fru.product);
        }
        for (const FruArea* const area : areas)
            std::for_each(area->custom.begin(), area->custom.end(), replace);
        _keep(clean, areas);
        for (const auto& [offset, reply] : _pieces)
            reply->data.replace(1, std::string::npos,
                                _bytes.substr(offset, reply->data.size() - 1));
    }

private:
    // Leaves header and areas, each with a checksum that is as far from right as it was.
    void _keep(const std::string& clean, const std::vector<const FruArea*>& areas) {
        std::string kept = clean.substr(0, HeaderLength);
        kept.resize(clean.size(), '\xFF');
        for (const FruArea* const area : areas) {
            std::string bytes = clean.substr(area->offset, area->length);
            if (bytes.empty())
                continue;
            const unsigned change = _sum(_bytes.substr(area->offset, area->length)) - _sum(bytes);
            bytes.back() = static_cast<char>(static_cast<unsigned char>(bytes.back()) + change);
            kept.replace(area->offset, bytes.size(), bytes);
        }
        _bytes = kept;
    }

    static void _replace(std::string& bytes, const FruField& field, const Pseudonyms& pseudonyms) {
        std::string text = field.text;
        const std::string secret = secretIn(text);
        if (secret.empty())
            return;
        text.replace(text.find(secret), secret.size(), pseudonyms.ofText(secret));
        // Padding behind the text stays.
        const std::string stored = encodeIpmiText(field.encoding, text).substr(0, field.length);
        bytes.replace(field.offset, stored.size(), stored);
    }

    static unsigned _sum(const std::string& bytes) {
        unsigned sum = 0;
        for (const char byte : bytes)
            sum += static_cast<unsigned char>(byte);
        return sum;
    }

    std::string _bytes;
    std::vector<std::pair<std::size_t, IpmiReply*>> _pieces;
};

class Sanitizer {
public:
    Sanitizer(const std::string& key, std::string uuid)
        : _pseudonyms(key), _uuid(std::move(uuid)) {}

    void sanitize(IpmiReplies& replies) {
        for (auto& [text, reply] : replies.entries()) {
            const auto request = IpmiReplies::parseRequest(text);
            if (request && reply && reply->completion == IpmiNormal)
                _take(*request, *reply, replies);
        }
        for (auto& [name, unit] : _units)
            unit.sanitize(_pseudonyms);
    }

private:
    void _take(const IpmiRequest& request, IpmiReply& reply, const IpmiReplies& replies) {
        const bool isGuid = isCommand(request, IpmiFunction::Application, 0x08) ||
                            isCommand(request, IpmiFunction::Application, 0x37);
        if (isGuid) {
            reply.data = _sanitizeGuid(reply.data);
        } else if (isCommand(request, IpmiFunction::Storage, 0x11) && !reply.data.empty()) {
            IpmiRequest info = request;
            info.command = 0x10;
            info.data.resize(1);
            const auto found = replies.find(info);
            const bool isInWords = found && (byteAt(found->data, 2) & 1U) != 0;
            const std::size_t offset = wordAt(request.data, 1);
            _units[IpmiReplies::requestText(info)].add(isInWords ? 2 * offset : offset, reply);
        }
    }

    // The same as the firmware's where it is that, in whichever order.
    std::string _sanitizeGuid(const std::string& guid) const {
        const std::string backwards(guid.rbegin(), guid.rend());
        if (guid.empty() || guid.find_first_not_of(guid.front()) == std::string::npos)
            return guid;
        if (backwards != _uuid)
            return _pseudonyms.ofBytes(guid);
        const std::string result = _pseudonyms.ofBytes(_uuid);
        return {result.rbegin(), result.rend()};
    }

    Pseudonyms _pseudonyms;
    std::string _uuid;
    std::map<std::string, Unit> _units;
};

}  // namespace

void sanitizeController(MachineFiles& files, const std::string& key) {
    const auto file = files.find(nameOf(MachinePaths::managementControllerReplies()));
    if (file == files.end())
        return;
    IpmiReplies replies = IpmiReplies::parse(file->second);
    Sanitizer(key, firmwareUuid(files)).sanitize(replies);
    file->second = replies.text();
}

}  // namespace QZ
