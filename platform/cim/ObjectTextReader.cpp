// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/Exception.h>

#include <array>
#include <charconv>
#include <utility>

#include "ObjectText.h"
#include "ObjectTextCursor.h"
#include "ObjectTypes.h"

namespace QZ {

using namespace Pegasus;

namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : _cursor(text) {}

    CIMInstance outermost();

private:
    CIMInstance _instance();
    CIMProperty _property();
    CIMObjectPath _path();
    CIMKeyBinding _key();
    CIMName _name() { return CIMName(_cursor.name()); }
    CIMType _type();

    template <class T>
    CIMValue _value(bool isArray);
    template <class T>
    Array<T> _array();
    template <class Number>
    Number _number();

    void _read(Boolean& truth);
    void _read(Char16& c) { c = Char16(_number<Uint16>()); }
    void _read(String& text) { text = _cursor.quoted(); }
    void _read(CIMDateTime& date) { date.set(_cursor.quoted()); }
    void _read(CIMObjectPath& path);
    void _read(CIMObject& object) { object = CIMObject(_instance()); }
    void _read(CIMInstance& instance) { instance = _instance(); }
    template <class Number>
    void _read(Number& number) {
        number = _number<Number>();
    }

    ObjectTextCursor _cursor;
    int _depth = 0;
};

CIMInstance Reader::outermost() {
    CIMInstance instance = _instance();
    _cursor.require(";");
    if (!_cursor.isAtEnd())
        throw DamagedText();
    return instance;
}

CIMInstance Reader::_instance() {
    if (++_depth > DeepestInstance)
        throw DamagedText();
    _cursor.require("instance");
    _cursor.require("of");
    CIMInstance instance(_name());
    _cursor.require("{");
    _cursor.require("path");
    instance.setPath(_path());
    _cursor.require(";");
    while (!_cursor.accept("}"))
        instance.addProperty(_property());
    --_depth;
    return instance;
}

CIMType Reader::_type() {
    const std::string_view word = _cursor.word();
    for (int type = CIMTYPE_BOOLEAN; type <= CIMTYPE_INSTANCE; ++type) {
        if (word == cimTypeToString(static_cast<CIMType>(type)))
            return static_cast<CIMType>(type);
    }
    throw DamagedText();
}

CIMProperty Reader::_property() {
    const CIMType type = _type();
    const CIMName name = _name();
    const bool isArray = _cursor.accept("[");
    Uint32 size = 0;
    if (isArray && !_cursor.accept("]")) {
        size = _number<Uint32>();
        _cursor.require("]");
    }
    const CIMName referenceClass = _cursor.accept("of") ? _name() : CIMName();
    _cursor.require("=");
    const CIMValue value =
        _cursor.accept("null") ? CIMValue(type, isArray, size) : visitType(type, [&](auto known) {
            return _value<typename decltype(known)::Type>(isArray);
        });
    _cursor.require(";");
    return CIMProperty(name, value, size, referenceClass);
}

template <class T>
CIMValue Reader::_value(bool isArray) {
    if (isArray)
        return CIMValue(_array<T>());
    T scalar = T();
    _read(scalar);
    return CIMValue(scalar);
}

template <class T>
Array<T> Reader::_array() {
    Array<T> array;
    _cursor.require("{");
    if (_cursor.accept("}"))
        return array;
    do {
        T element = T();
        _read(element);
        array.append(element);
    } while (_cursor.accept(","));
    _cursor.require("}");
    return array;
}

void Reader::_read(Boolean& truth) {
    truth = _cursor.accept("true");
    if (!truth)
        _cursor.require("false");
}

void Reader::_read(CIMObjectPath& path) {
    _cursor.require("path");
    path = _path();
}

template <class Number>
Number Reader::_number() {
    const std::string_view digits = _cursor.number();
    Number number = Number();
    const char* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        throw DamagedText();
    return number;
}

CIMObjectPath Reader::_path() {
    CIMObjectPath path;
    if (!_cursor.accept("{")) {
        path.setClassName(_name());
        _cursor.require("{");
    }
    if (_cursor.accept("host")) {
        path.setHost(_cursor.quoted());
        _cursor.require(";");
    }
    if (_cursor.accept("namespace")) {
        path.setNameSpace(CIMNamespaceName(_cursor.quoted()));
        _cursor.require(";");
    }
    Array<CIMKeyBinding> keys;
    while (_cursor.accept("key"))
        keys.append(_key());
    _cursor.require("}");
    path.setKeyBindings(keys);
    return path;
}

CIMKeyBinding Reader::_key() {
    static constexpr std::array<std::pair<std::string_view, CIMKeyBinding::Type>, 4> types = {{
        {"boolean", CIMKeyBinding::BOOLEAN},
        {"string", CIMKeyBinding::STRING},
        {"numeric", CIMKeyBinding::NUMERIC},
        {"reference", CIMKeyBinding::REFERENCE},
    }};
    const std::string_view word = _cursor.word();
    for (const auto& [text, type] : types) {
        if (word != text)
            continue;
        const CIMName name = _name();
        _cursor.require("=");
        const String value = _cursor.quoted();
        _cursor.require(";");
        return CIMKeyBinding(name, value, type);
    }
    throw DamagedText();
}

}  // namespace

std::optional<CIMInstance> parseInstance(std::string_view text) {
    try {
        return Reader(text).outermost();
    } catch (const DamagedText&) {
        return std::nullopt;
    } catch (const Exception&) {
        // A name, a path or a date of the right form that CIM does not have.
        return std::nullopt;
    }
}

}  // namespace QZ
