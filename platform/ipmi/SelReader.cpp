// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <optional>
#include <set>

#include "BmcReaders.h"
#include "IpmiBytes.h"

namespace QZ {

// A whole entry needs no reservation.
BmcSelEntries readSel(IpmiSession& session, std::uint16_t from) {
    constexpr unsigned char GetEntry = 0x43;
    constexpr std::uint16_t LastRecord = 0xFFFF;
    BmcSelEntries result;
    result.next = from;
    std::set<std::uint16_t> seen;
    while (result.next != LastRecord && seen.insert(result.next).second) {
        IpmiRequest request;
        request.function = IpmiFunction::Storage;
        request.command = GetEntry;
        request.data = {'\0',
                        '\0',
                        static_cast<char>(result.next & 0xFFU),
                        static_cast<char>(result.next >> 8U),
                        '\0',
                        '\xFF'};
        const std::optional<IpmiReply> reply = session.ask(request);
        if (!reply)
            return result;
        const std::optional<BmcSelEntry> entry =
            reply->completion == IpmiNormal && reply->data.size() > 2
                ? decodeSelEntry(reply->data.substr(2))
                : std::nullopt;
        if (!entry)
            break;
        result.entries.push_back(*entry);
        result.next = wordAt(reply->data, 0);
    }
    result.next = LastRecord;
    return result;
}

}  // namespace QZ
