// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <charconv>
#include <optional>

#include "CimText.h"
#include "Text.h"
#include "ValueMaker.h"
#include "XmlObjects.h"
#include "XmlText.h"

namespace QZ {

using namespace Pegasus;

namespace {

// An escape, since the text is a client's or a server's own.
String _string(const std::string& text) {
    return String(text.data(), Uint32(text.size()));
}

// Decimal, or hexadecimal behind "0x", with a sign.
std::optional<CIMValue> _integer(const std::string& text, CIMType type) {
    const char* at = text.data();
    const char* const end = at + text.size();
    const bool negative = at != end && *at == '-';
    at += at != end && (*at == '-' || *at == '+') ? 1 : 0;
    int base = 10;
    if (end - at > 2 && at[0] == '0' && (at[1] == 'x' || at[1] == 'X')) {
        at += 2;
        base = 16;
    }
    std::uint64_t magnitude = 0;
    const auto [stop, error] = std::from_chars(at, end, magnitude, base);
    if (stop != end || error != std::errc()) {
        return std::nullopt;
    }
    return makeInteger(type, negative, magnitude);
}

// As DSP0201 has it: decimal, with an exponent or none, or one of its three words. What else
// from_chars knows ("inf", "nan(1)") is no value.
std::optional<CIMValue> _real(const std::string& text, CIMType type) {
    const bool isWord = text == "INF" || text == "-INF" || text == "NaN";
    if (!isWord && text.find_first_not_of("0123456789.eE+-") != text.npos) {
        return std::nullopt;
    }
    const bool isPositive = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return makeReal(type, isPositive ? text.substr(1) : text);
}

std::optional<CIMValue> _character(const std::string& text) {
    const String string = _string(text);
    return string.size() == 1 ? std::optional(CIMValue(Char16(string[0]))) : std::nullopt;
}

std::optional<CIMValue> _scalar(const std::string& text, CIMType type) {
    switch (type) {
        case CIMTYPE_STRING:
            return CIMValue(_string(text));
        case CIMTYPE_BOOLEAN: {
            const std::string word(trimmed(text));
            if (sameName(word, "true")) {
                return CIMValue(Boolean(true));
            }
            return sameName(word, "false") ? std::optional(CIMValue(Boolean(false))) : std::nullopt;
        }
        case CIMTYPE_REAL32:
        case CIMTYPE_REAL64:
            return _real(std::string(trimmed(text)), type);
        case CIMTYPE_CHAR16:
            return _character(text);
        case CIMTYPE_DATETIME:
            return CIMValue(CIMDateTime(_string(std::string(trimmed(text)))));
        case CIMTYPE_REFERENCE:
            return CIMValue(CIMObjectPath(_string(text)));
        default:
            return _integer(std::string(trimmed(text)), type);
    }
}

CIMValue _scalarOrFail(const std::string& text, CIMType type) {
    try {
        if (const std::optional<CIMValue> value = _scalar(text, type)) {
            return *value;
        }
    } catch (const Exception&) {
        // No date or path: told like every other value.
    }
    throw XmlValueError("\"" + text + "\" is no " + cimTypeToString(type));
}

}  // namespace

CimUntypedValue readUntypedValue(const XmlElement& element) {
    CimUntypedValue value;
    value.isNull = false;
    if (element.name == "VALUE") {
        if (!element.children.empty()) {
            throw XmlLayoutError("VALUE holds elements");
        }
        value.texts.emplace_back(element.text);
        return value;
    }
    if (element.name != "VALUE.ARRAY") {
        throw XmlLayoutError("VALUE or VALUE.ARRAY expected, not " + element.name);
    }
    value.isArray = true;
    for (const XmlElement& child : element.children) {
        if (child.name == "VALUE.NULL") {
            value.texts.emplace_back(std::nullopt);
        } else if (child.name == "VALUE" && child.children.empty()) {
            value.texts.emplace_back(child.text);
        } else {
            throw XmlLayoutError("VALUE.ARRAY holds " + child.name);
        }
    }
    return value;
}

CIMValue typedValue(const CimUntypedValue& untyped, CIMType type, bool isArray) {
    if (untyped.isNull) {
        return CIMValue(type, isArray);
    }
    if (untyped.isArray != isArray) {
        throw XmlValueError(isArray ? "an array is expected" : "no array is expected");
    }
    std::vector<CIMValue> elements;
    for (const auto& text : untyped.texts) {
        if (!text) {
            throw XmlValueError("a null element: arrays have none here");
        }
        elements.push_back(_scalarOrFail(*text, type));
    }
    return isArray ? makeArray(type, elements) : elements.front();
}

}  // namespace QZ
