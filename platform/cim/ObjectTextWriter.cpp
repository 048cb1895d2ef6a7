// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/Char16.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "CimText.h"
#include "Error.h"
#include "ObjectText.h"
#include "ObjectTypes.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr std::array<const char*, 4> _keyTypes = {"boolean", "string", "numeric", "reference"};

// What an editor, a terminal or UTF-8 itself would not keep.
bool _isEscaped(std::uint32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0xD800 && c < 0xE000) ||
           (c >= 0x2028 && c < 0x2030) || c == 0xFEFF || c == 0xFFFE || c == 0xFFFF;
}

class Writer {
public:
    void instance(const CIMConstInstance& instance, bool isOutermost);
    std::string take() { return std::move(_text); }

private:
    void _property(const CIMConstProperty& property);
    void _quoted(const String& text);
    void _escape(std::uint32_t unit);
    void _name(const CIMName& name);

    template <class T>
    void _value(const CIMValue& value);
    template <class T>
    void _number(T number);

    void _scalar(const Boolean& truth) { _text += truth ? "true" : "false"; }
    void _scalar(const Char16& c) { _number(Uint16(c)); }
    void _scalar(const String& text) { _quoted(text); }
    void _scalar(const CIMDateTime& date) { _quoted(date.toString()); }
    void _scalar(const CIMInstance& value) { instance(value, false); }
    void _scalar(const CIMObjectPath& path);
    void _scalar(const CIMObject& object);
    template <class Number>
    void _scalar(const Number& number) {
        _number(number);
    }

    std::string _text;
    int _depth = 0;
};

void Writer::instance(const CIMConstInstance& instance, bool isOutermost) {
    if (++_depth > DeepestInstance)
        throw Error("Cannot store an instance with instances inside that are nested too deep");
    const char* const lineStart = isOutermost ? "\n  " : "";
    _text += "instance of ";
    _name(instance.getClassName());
    _text += " {";
    _text += lineStart;
    _scalar(instance.getPath());
    _text += ';';
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        _text += isOutermost ? lineStart : " ";
        _property(instance.getProperty(i));
    }
    _text += isOutermost ? "\n};\n" : "}";
    --_depth;
}

void Writer::_property(const CIMConstProperty& property) {
    _text += cimTypeToString(property.getType());
    _text += ' ';
    _name(property.getName());
    if (property.isArray()) {
        _text += '[';
        if (property.getArraySize() != 0)
            _number(property.getArraySize());
        _text += ']';
    }
    if (!property.getReferenceClassName().isNull()) {
        _text += " of ";
        _name(property.getReferenceClassName());
    }
    _text += " = ";
    if (property.getValue().isNull()) {
        _text += "null";
    } else {
        visitType(property.getType(),
                  [&](auto type) { _value<typename decltype(type)::Type>(property.getValue()); });
    }
    _text += ';';
}

// Names of ASCII stand as they are; the rest is quoted, for a name may hold half a character.
void Writer::_name(const CIMName& name) {
    const std::string text = make_string(name.getString());
    if (std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; }))
        _text += text;
    else
        _quoted(name.getString());
}

template <class T>
void Writer::_value(const CIMValue& value) {
    if (!value.isArray()) {
        T scalar = T();
        value.get(scalar);
        _scalar(scalar);
        return;
    }
    Array<T> array;
    value.get(array);
    _text += '{';
    for (Uint32 i = 0; i < array.size(); ++i) {
        _text += i == 0 ? "" : ", ";
        _scalar(static_cast<const Array<T>&>(array)[i]);
    }
    _text += '}';
}

void Writer::_scalar(const CIMObjectPath& path) {
    _text += "path ";
    if (!path.getClassName().isNull()) {
        _name(path.getClassName());
        _text += ' ';
    }
    _text += '{';
    if (path.getHost().size() != 0) {
        _text += "host ";
        _quoted(path.getHost());
        _text += "; ";
    }
    if (!path.getNameSpace().isNull()) {
        _text += "namespace ";
        _quoted(path.getNameSpace().getString());
        _text += "; ";
    }
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        _text += "key ";
        _text += _keyTypes.at(static_cast<std::size_t>(keys[i].getType()));
        _text += ' ';
        _name(keys[i].getName());
        _text += " = ";
        _quoted(keys[i].getValue());
        _text += i + 1 == keys.size() ? ";" : "; ";
    }
    _text += '}';
}

void Writer::_scalar(const CIMObject& object) {
    if (!object.isInstance())
        throw Error("Cannot store a class as the value of a property");
    instance(CIMInstance(object), false);
}

template <class T>
void Writer::_number(T number) {
    // A real is written with the digits that it takes to read the same number back.
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    _text.append(digits.data(), end);
}

void Writer::_quoted(const String& text) {
    _text += '"';
    for (Uint32 i = 0; i < text.size(); ++i) {
        const std::uint32_t unit = text[i];
        const std::uint32_t next = i + 1 < text.size() ? std::uint32_t{text[i + 1]} : 0;
        if ((unit & 0xFC00U) == 0xD800U && (next & 0xFC00U) == 0xDC00U) {
            appendUtf8(_text, 0x10000 + ((unit & 0x3FFU) << 10) + (next & 0x3FFU));
            ++i;
        } else {
            _escape(unit);
        }
    }
    _text += '"';
}

void Writer::_escape(std::uint32_t unit) {
    switch (unit) {
        case '"':
        case '\\':
            _text += '\\';
            _text += static_cast<char>(unit);
            return;
        case '\n':
            _text += "\\n";
            return;
        case '\r':
            _text += "\\r";
            return;
        case '\t':
            _text += "\\t";
            return;
        default:
            break;
    }
    if (!_isEscaped(unit)) {
        appendUtf8(_text, unit);
        return;
    }
    constexpr const char* hex = "0123456789ABCDEF";
    _text += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        _text += hex[(unit >> static_cast<unsigned>(shift)) & 0xFU];
}

}  // namespace

std::string composeInstance(const CIMInstance& instance) {
    Writer writer;
    writer.instance(instance, true);
    return writer.take();
}

}  // namespace QZ
