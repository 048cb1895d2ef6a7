// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DescriptionKeys.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

#include "FieldText.h"
#include "tavqz/ServiceProcessorRecords.h"

namespace {

using Int32 = std::numeric_limits<std::int32_t>;

struct KeyRow {
    const char* key;
    bool isForAll;  // asked without a processor's index
    long long least;
    long long most;
    std::size_t room = 0;  // of a text, which then has no least and most
};

constexpr KeyRow _text(const char* key, std::size_t room) {
    return {key, false, 0, 0, room};
}

constexpr KeyRow _number(const char* key, long long least, long long most) {
    return {key, false, least, most};
}

constexpr KeyRow _int32(const char* key) {
    return _number(key, Int32::min(), Int32::max());
}

// Milliseconds.
constexpr KeyRow _delay(const char* key) {
    return _number(key, 0, 600'000);
}

constexpr KeyRow _ofAll(KeyRow row) {
    row.isForAll = true;
    return row;
}

constexpr KeyRow _keys[] = {
    _ofAll(_int32("count")),
    _ofAll(_int32("type")),
    _text("machine.uuid", sizeof MachineLevelRecord::uuid),
    _text("machine.type", sizeof MachineLevelRecord::machineType),
    _text("machine.model", sizeof MachineLevelRecord::machineModel),
    _text("machine.serial", sizeof MachineLevelRecord::serialNumber),
    _text("postbios.level", sizeof PostBiosRecord::buildLevel),
    _text("postbios.date", sizeof PostBiosRecord::buildDate),
    _int32("postbios.version"),
    _number("state.hours", 0, std::numeric_limits<long long>::max()),
    _number("state.restarts", 0, std::numeric_limits<std::uint16_t>::max()),
    _number("state.status", 0, std::numeric_limits<std::uint16_t>::max()),
    _number("state.current", 0, std::numeric_limits<std::uint32_t>::max()),
    _int32("watchdog.post"),
    _int32("watchdog.loader"),
    _int32("watchdog.os"),
    _int32("watchdog.power"),
    _int32("fail.vpd"),
    _int32("fail.state"),
    _int32("fail.machine"),
    _int32("fail.watchdog"),
    _int32("fail.postbios"),
    _ofAll(_int32("fail.type")),
    _delay("delay.vpd"),
    _delay("delay.state"),
    _delay("delay.machine"),
    _delay("delay.watchdog"),
    _delay("delay.postbios"),
    _ofAll(_delay("delay.type")),
};

constexpr long long _lastProcessor = 255;
constexpr long long _lastKind = 255;
// More than the module asks for, so that it can be seen where it stops.
constexpr long long _lastInstance = 999;

// Takes the text up to the next point, and the point.
std::string _takePart(std::string& text) {
    const std::size_t end = std::min(text.find('.'), text.size());
    std::string part = text.substr(0, end);
    text.erase(0, end + 1);
    return part;
}

bool _isNumber(const std::string& text, long long least, long long most) {
    long long value = 0;
    return readNumber(text, value) && value >= least && value <= most;
}

// A number in a key, which is written in one way.
bool _isIndex(const std::string& text, long long first, long long last) {
    long long value = 0;
    return readNumber(text, value) && value >= first && value <= last &&
           text == std::to_string(value);
}

// Takes the "sp1." of a key that is about one processor.
bool _takeProcessor(std::string& key) {
    std::string rest = key;
    const std::string part = _takePart(rest);
    if (part.compare(0, 2, "sp") != 0 || !_isIndex(part.substr(2), 0, _lastProcessor)) {
        return false;
    }
    key = rest;
    return true;
}

const KeyRow* _find(const std::string& key) {
    const auto* found = std::find_if(std::begin(_keys), std::end(_keys),
                                     [&](const KeyRow& row) { return key == row.key; });
    return found != std::end(_keys) ? found : nullptr;
}

// Of "vpd.KIND.INSTANCE.FIELD", the field; the rest stays in key.
std::string _takeField(std::string& key) {
    const std::size_t point = key.rfind('.') + 1;
    std::string field = key.substr(point);
    key.erase(point);
    return field;
}

const char* _whyWrongVpdKey(std::string key) {
    _takePart(key);
    if (!_isIndex(_takePart(key), 0, _lastKind)) {
        return "has no kind from 0 to 255";
    }
    if (!_isIndex(_takePart(key), 1, _lastInstance)) {
        return "has no instance from 1 to 999";
    }
    return key == "invalid" || checkField(key, "") != FieldCheck::NoField
               ? nullptr
               : "ends in no field of a VPD record";
}

}  // namespace

const char* whyWrongKey(const std::string& key) {
    std::string rest = key;
    const bool isOfOne = _takeProcessor(rest);
    if (rest.compare(0, 4, "vpd.") == 0) {
        return _whyWrongVpdKey(rest);
    }
    const KeyRow* row = _find(rest);
    if (row == nullptr) {
        return "is no key";
    }
    return row->isForAll && isOfOne ? "is said of all processors at once" : nullptr;
}

std::string whyWrongValue(const std::string& key, const std::string& value) {
    std::string rest = key;
    _takeProcessor(rest);
    const KeyRow* row = _find(rest);
    if (row == nullptr) {
        const std::string field = _takeField(rest);
        const char* form =
            field == "invalid" ? (value == "yes" ? nullptr : "it is \"yes\"") : fieldForm(field);
        return form == nullptr || checkField(field, value) == FieldCheck::Good ? "" : form;
    }
    if (row->room != 0) {
        return value.size() <= row->room
                   ? ""
                   : "it has room for " + std::to_string(row->room) + " characters";
    }
    return _isNumber(value, row->least, row->most)
               ? ""
               : "it is a number from " + std::to_string(row->least) + " to " +
                     std::to_string(row->most);
}
