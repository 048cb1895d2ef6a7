// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ValueMaker.h"

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <charconv>
#include <limits>
#include <stdexcept>

namespace QZ {

using namespace Pegasus;

namespace {

template <class T>
std::optional<CIMValue> _integer(bool negative, std::uint64_t magnitude) {
    if (negative && magnitude != 0) {
        // The lowest value's magnitude is one more than the highest's.
        const auto highest = std::uint64_t(std::numeric_limits<T>::max());
        if (!std::numeric_limits<T>::is_signed || magnitude - 1 > highest) {
            return std::nullopt;
        }
        return CIMValue(T(-std::int64_t(magnitude - 1) - 1));
    }
    if (magnitude > std::uint64_t(std::numeric_limits<T>::max())) {
        return std::nullopt;
    }
    return CIMValue(T(magnitude));
}

template <class T>
std::optional<CIMValue> _real(const std::string& text) {
    T value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end || error != std::errc()) {
        return std::nullopt;
    }
    return CIMValue(value);
}

template <class T>
CIMValue _array(const std::vector<CIMValue>& elements) {
    Array<T> array;
    for (const CIMValue& element : elements) {
        T value = T();
        element.get(value);
        array.append(value);
    }
    return CIMValue(array);
}

std::optional<CIMValue> _fromText(const std::string& text, CIMType type) {
    const String string(text.data(), Uint32(text.size()));
    switch (type) {
        case CIMTYPE_STRING:
            return CIMValue(string);
        case CIMTYPE_DATETIME:
            return CIMValue(CIMDateTime(string));
        case CIMTYPE_REFERENCE:
            return CIMValue(CIMObjectPath(string));
        default:
            return std::nullopt;
    }
}

std::optional<CIMValue> _scalar(const MofLiteral& literal, CIMType type) {
    const bool isReal = type == CIMTYPE_REAL32 || type == CIMTYPE_REAL64;
    const std::string sign = literal.negative ? "-" : "";
    switch (literal.kind) {
        case MofLiteral::Boolean:
            return type == CIMTYPE_BOOLEAN ? std::optional(CIMValue(Boolean(literal.number != 0)))
                                           : std::nullopt;
        case MofLiteral::Integer:
            return isReal ? makeReal(type, sign + std::to_string(literal.number))
                          : makeInteger(type, literal.negative, literal.number);
        case MofLiteral::Real:
            return isReal ? makeReal(type, sign + literal.text) : std::nullopt;
        case MofLiteral::Char:
            return type == CIMTYPE_CHAR16 ? std::optional(CIMValue(Char16(Uint16(literal.number))))
                                          : std::nullopt;
        case MofLiteral::String:
            return _fromText(literal.text, type);
        default:
            return std::nullopt;
    }
}

CIMValue _scalarOrFail(const MofDocument& document, const MofLiteral& literal, CIMType type) {
    const std::string expected = std::string("a value of type ") + cimTypeToString(type);
    try {
        if (const std::optional<CIMValue> value = _scalar(literal, type)) {
            return *value;
        }
    } catch (const Exception&) {
        // A text that is no date or path: reported with its place, like every other value.
        document.fail(literal.position, expected + " expected, the text is none");
    }
    document.fail(literal.position, expected + " expected");
}

}  // namespace

std::optional<CIMValue> makeInteger(CIMType type, bool negative, std::uint64_t magnitude) {
    switch (type) {
        case CIMTYPE_UINT8:
            return _integer<Uint8>(negative, magnitude);
        case CIMTYPE_SINT8:
            return _integer<Sint8>(negative, magnitude);
        case CIMTYPE_UINT16:
            return _integer<Uint16>(negative, magnitude);
        case CIMTYPE_SINT16:
            return _integer<Sint16>(negative, magnitude);
        case CIMTYPE_UINT32:
            return _integer<Uint32>(negative, magnitude);
        case CIMTYPE_SINT32:
            return _integer<Sint32>(negative, magnitude);
        case CIMTYPE_UINT64:
            return _integer<Uint64>(negative, magnitude);
        case CIMTYPE_SINT64:
            return _integer<Sint64>(negative, magnitude);
        default:
            return std::nullopt;
    }
}

std::optional<CIMValue> makeReal(CIMType type, const std::string& text) {
    return type == CIMTYPE_REAL32 ? _real<Real32>(text) : _real<Real64>(text);
}

CIMValue makeArray(CIMType type, const std::vector<CIMValue>& elements) {
    switch (type) {
#define TAVQZ_X(TYPE, PASSED, CODE) \
    case CODE:                      \
        return _array<TYPE>(elements);
        TAVQZ_CIM_TYPES(TAVQZ_X)
#undef TAVQZ_X
    }
    throw std::logic_error("an array of a type that CIM does not have");
}

CIMValue makeValue(const MofDocument& document, const MofLiteral& literal, CIMType type,
                   bool isArray) {
    if (literal.kind == MofLiteral::Null) {
        return CIMValue(type, isArray);
    }
    if (isArray != (literal.kind == MofLiteral::Array)) {
        document.fail(literal.position, isArray ? "an array expected" : "no array expected");
    }
    if (!isArray) {
        return _scalarOrFail(document, literal, type);
    }
    std::vector<CIMValue> elements;
    for (const MofLiteral& element : literal.elements) {
        elements.push_back(_scalarOrFail(document, element, type));
    }
    return makeArray(type, elements);
}

}  // namespace QZ
