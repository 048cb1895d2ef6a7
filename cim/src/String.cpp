// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "AsciiCase.h"
#include "StringRep.h"
#include "Utf8.h"

namespace Pegasus {

namespace {

void _requirePointer(const void* pointer) {
    if (!pointer)
        throw Exception("null pointer where text is needed");
}

void _requireWithin(Uint32 index, Uint32 size) {
    if (index > size)
        throw IndexOutOfBoundsException();
}

Uint32 _length(const Char16* str) {
    _requirePointer(str);
    Uint32 size = 0;
    while (Uint16(str[size]) != 0)
        ++size;
    return size;
}

Uint32 _length(const char* str) {
    _requirePointer(str);
    const std::size_t size = std::strlen(str);
    if (size > PEG_NOT_FOUND - 1)
        throw std::bad_alloc();
    return static_cast<Uint32>(size);
}

}  // namespace

const String String::EMPTY;

String::String(const String& str) : _rep(str._rep) {
    if (_rep)
        _rep->handles.retain();
}

String::String(const String& str, Uint32 n) : _rep(nullptr) {
    _requireWithin(n, str.size());
    append(str.getChar16Data(), n);
}

String::String(const Char16* str) : String(str, _length(str)) {}

String::String(const Char16* str, Uint32 n) : _rep(nullptr) {
    append(str, n);
}

String::String(const char* str) : String(str, _length(str)) {}

String::String(const char* str, Uint32 n) : _rep(nullptr) {
    _requirePointer(str);
    if (n == 0)
        return;
    StringRepHandle rep = makeStringRep(n);
    rep->setSize(QZ::decodeUtf8(str, n, rep->units()));
    _rep = rep.release();
}

String::~String() {
    clear();
}

String& String::operator=(const String& str) {
    String copy(str);
    std::swap(_rep, copy._rep);
    return *this;
}

String& String::assign(const String& str) {
    return *this = str;
}

String& String::assign(const Char16* str) {
    return assign(String(str));
}

String& String::assign(const Char16* str, Uint32 n) {
    return assign(String(str, n));
}

String& String::assign(const char* str) {
    return assign(String(str));
}

String& String::assign(const char* str, Uint32 n) {
    return assign(String(str, n));
}

void String::clear() {
    StringRepHandle(std::exchange(_rep, nullptr)).reset();
}

void String::reserveCapacity(Uint32 capacity) {
    if (!_rep || capacity > _rep->capacity)
        _makeOwn(capacity);
}

Uint32 String::size() const {
    return _rep ? _rep->size : 0;
}

const Char16* String::getChar16Data() const {
    static const Char16 nothing;
    return _rep ? _rep->units() : &nothing;
}

Char16& String::operator[](Uint32 index) {
    _requireWithin(index, size());
    _makeOwn(size());
    return _rep->units()[index];
}

Char16 String::operator[](Uint32 index) const {
    _requireWithin(index, size());
    return getChar16Data()[index];
}

// Leaves this String with units that it shares with none, and room for so many.
void String::_makeOwn(Uint32 capacity) {
    if (_rep && _rep->handles.isUnique() && _rep->capacity >= capacity)
        return;
    StringRepHandle fresh = makeStringRep(std::max(capacity, size()));
    fresh->add(getChar16Data(), size());
    clear();
    _rep = fresh.release();
}

String& String::append(const Char16& c) {
    return append(&c, 1);
}

String& String::append(const Char16* str, Uint32 n) {
    _requirePointer(str);
    if (n == 0)
        return *this;
    if (_rep && _rep->handles.isUnique() && _rep->capacity - _rep->size >= n) {
        _rep->add(str, n);
        return *this;
    }
    const Uint32 most = Uint32(-1);
    if (n > most - size())
        throw std::bad_alloc();
    const Uint32 doubled = size() > most / 2 ? most : size() * 2;
    StringRepHandle fresh = makeStringRep(std::max(size() + n, doubled));
    fresh->add(getChar16Data(), size());
    // The old units go after this: str may lie in them.
    fresh->add(str, n);
    clear();
    _rep = fresh.release();
    return *this;
}

String& String::append(const String& str) {
    return _rep ? append(str.getChar16Data(), str.size()) : assign(str);
}

void String::remove(Uint32 index, Uint32 size) {
    const Uint32 all = this->size();
    _requireWithin(index, all);
    const Uint32 count = size == PEG_NOT_FOUND ? all - index : size;
    _requireWithin(count, all - index);
    if (count == 0)
        return;
    _makeOwn(all);
    Char16* const hole = _rep->units() + index;
    std::copy(hole + count, _rep->units() + all, hole);
    _rep->setSize(all - count);
}

String String::subString(Uint32 index, Uint32 n) const {
    if (index >= size())
        return String();
    return String(getChar16Data() + index, std::min(n, size() - index));
}

void String::toLower() {
    if (!_rep)
        return;
    _makeOwn(_rep->size);
    Char16* const units = _rep->units();
    std::transform(units, units + _rep->size, units, QZ::toLowerAscii);
}

}  // namespace Pegasus
