// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Rights.h"

#include <strings.h>

#include <algorithm>

namespace QZ {

namespace {

constexpr Right RIGHTS[] = {Right::Read, Right::Write, Right::Subscribe};

constexpr std::string_view WRITING_METHODS[] = {"CreateInstance", "DeleteInstance",
                                                "ModifyInstance", "SetProperty"};

// With DSP1054, and the older handlers that some clients still make.
constexpr std::string_view SUBSCRIPTION_CLASSES[] = {
    "CIM_FormattedIndicationSubscription", "CIM_IndicationFilter",       "CIM_IndicationHandler",
    "CIM_IndicationHandlerCIMXML",         "CIM_IndicationSubscription", "CIM_ListenerDestination",
    "CIM_ListenerDestinationCIMXML",
};

bool _isSameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && strncasecmp(left.data(), right.data(), left.size()) == 0;
}

template <std::size_t Count>
bool _contains(const std::string_view (&names)[Count], std::string_view name) {
    return std::any_of(std::begin(names), std::end(names),
                       [name](std::string_view known) { return _isSameName(known, name); });
}

}  // namespace

const char* nameOf(Right right) {
    switch (right) {
        case Right::Write:
            return "write";
        case Right::Subscribe:
            return "subscribe";
        default:
            return "read";
    }
}

std::string Rights::text() const {
    std::string text;
    for (const Right right : RIGHTS) {
        if (has(right)) {
            text.append(text.empty() ? "" : ",").append(nameOf(right));
        }
    }
    return text;
}

std::optional<Rights> parseRights(std::string_view text) {
    Rights rights;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view name = text.substr(begin, end - begin);
        const auto* const found =
            std::find_if(std::begin(RIGHTS), std::end(RIGHTS),
                         [name](Right right) { return name == nameOf(right); });
        if (found == std::end(RIGHTS)) {
            return std::nullopt;
        }
        rights = rights.with(*found);
        begin = end + 1;
    }
    return rights;
}

Right requiredRight(std::string_view method, std::string_view className) {
    if (!_contains(WRITING_METHODS, method)) {
        return Right::Read;
    }
    return _contains(SUBSCRIPTION_CLASSES, className) ? Right::Subscribe : Right::Write;
}

}  // namespace QZ
