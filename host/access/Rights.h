// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace QZ {

enum class Right : unsigned {
    Read = 1,
    Write = 2,      // asset data
    Subscribe = 4,  // to alerts
};

// What somebody may do; no right contains another.
class Rights {
public:
    static Rights none() { return {}; }
    static Rights all() {
        return Rights().with(Right::Read).with(Right::Write).with(Right::Subscribe);
    }

    bool has(Right right) const { return (_bits & static_cast<unsigned>(right)) != 0; }
    Rights with(Right right) const {
        Rights result = *this;
        result._bits |= static_cast<unsigned>(right);
        return result;
    }
    bool operator==(const Rights& other) const { return _bits == other._bits; }

    // "read,subscribe", in the order of the enumeration.
    std::string text() const;

private:
    unsigned _bits = 0;
};

// "read", "write" or "subscribe".
const char* nameOf(Right right);

// Reads such names with commas between them, in any order. None for an empty text, and where one of
// them is not known.
std::optional<Rights> parseRights(std::string_view text);

// What an intrinsic method of DSP0200 needs. The class is that of the instance it is about; names
// are told apart by more than their case only.
Right requiredRight(std::string_view method, std::string_view className);

}  // namespace QZ
