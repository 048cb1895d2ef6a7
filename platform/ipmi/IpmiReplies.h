// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>

#include "IpmiCommand.h"

namespace QZ {

// What a controller replies to the commands that it was recorded with: a line for each, of two
// digits to a byte, "FUNCTION COMMAND DATA… = COMPLETION DATA…". A command for a controller other
// than the BMC, or for another unit of it, starts with "ADDRESS.CHANNEL.LUN". The reply "none" is
// one that never comes. What stands behind '#' is a remark. A value.
class IpmiReplies {
public:
    // Lines that are wrong are passed over; of two for the same command the later one counts.
    static IpmiReplies parse(const std::string& text);
    std::string text() const;

    void add(const IpmiRequest& request, const IpmiReply& reply);
    std::optional<IpmiReply> find(const IpmiRequest& request) const;
    bool hasNoReply(const IpmiRequest& request) const;

    // The commands and what was replied; nothing where none ever comes.
    std::map<std::string, std::optional<IpmiReply>>& entries() & { return _entries; }

    // What stands in front of the "=".
    static std::string requestText(const IpmiRequest& request);
    // Nothing where the text is none of a command.
    static std::optional<IpmiRequest> parseRequest(const std::string& text);

private:
    std::map<std::string, std::optional<IpmiReply>> _entries;
};

}  // namespace QZ
