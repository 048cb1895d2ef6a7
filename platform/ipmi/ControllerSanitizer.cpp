// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <vector>

#include "ControllerRecord.h"
#include "FirmwareSecrets.h"
#include "FruDecoder.h"
#include "IpmiBytes.h"
#include "IpmiReplies.h"
#include "MachinePaths.h"
#include "Secrets.h"

namespace QZ {

namespace {

constexpr std::size_t HeaderLength = 8;

bool isCommand(const IpmiRequest& request, IpmiFunction function, unsigned char command) {
    return request.function == function && request.command == command;
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

    void sanitize(Secrets& secrets) {
        const FruInventory fru = decodeFru(_bytes);
        std::string clean = _bytes;
        const auto replace = [&](const FruField& field) { _replace(clean, field, secrets); };
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

    static void _replace(std::string& bytes, const FruField& field, Secrets& secrets) {
        if (secretIn(field.text).empty())
            return;
        secrets.addText(field.text);
        const std::string text = secrets.replaced(field.text);
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
    Sanitizer(const std::string& key, const SmBios::Contents& firmware) : _secrets(key) {
        for (const SmBios::Table& structure : firmware.tables)
            _secrets.addNumber(uuidOf(structure));
    }

    void sanitize(IpmiReplies& replies) {
        for (auto& [text, reply] : replies.entries()) {
            const auto request = IpmiReplies::parseRequest(text);
            if (request && reply && reply->completion == IpmiNormal)
                _take(*request, *reply, replies);
        }
        for (auto& [name, unit] : _units)
            unit.sanitize(_secrets);
    }

private:
    void _take(const IpmiRequest& request, IpmiReply& reply, const IpmiReplies& replies) {
        const bool isGuid = isCommand(request, IpmiFunction::Application, 0x08) ||
                            isCommand(request, IpmiFunction::Application, 0x37);
        if (isGuid) {
            // The firmware's, in whichever order, or another.
            _secrets.addNumber(reply.data);
            _secrets.replaceIn(reply.data);
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

    Secrets _secrets;
    std::map<std::string, Unit> _units;
};

}  // namespace

void sanitizeController(MachineFiles& files, const std::string& key) {
    const auto file = files.find(nameBelowRoot(MachinePaths::managementControllerReplies()));
    if (file == files.end())
        return;
    IpmiReplies replies = IpmiReplies::parse(file->second);
    Sanitizer(key, firmwareOf(files)).sanitize(replies);
    file->second = replies.text();
}

}  // namespace QZ
