// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <ostream>
#include <utility>

#include "Utf8.h"

// String as bytes.

namespace Pegasus {

CString::CString(const CString& other) : _rep(nullptr) {
    if (!other._rep)
        return;
    const std::size_t size = std::strlen(other._rep) + 1;
    _rep = new char[size];
    std::memcpy(_rep, other._rep, size);
}

CString::~CString() {
    delete[] _rep;
}

CString& CString::operator=(const CString& other) {
    CString copy(other);
    std::swap(_rep, copy._rep);
    return *this;
}

CString String::getCString() const {
    const std::size_t count = size();
    if (count > (std::size_t(-1) - 1) / 3)
        throw std::bad_alloc();
    auto bytes = std::make_unique<char[]>(count * 3 + 1);
    bytes[QZ::encodeUtf8(getChar16Data(), size(), bytes.get())] = '\0';
    return CString(bytes.release());
}

// NOLINTNEXTLINE(cert-dcl50-cpp): the interface has it.
void String::appendPrintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    char* text = nullptr;
    const int length = vasprintf(&text, format, arguments);
    va_end(arguments);
    if (length < 0)
        throw std::bad_alloc();
    const std::unique_ptr<char, decltype(&std::free)> owner(text, std::free);
    append(String(text));
}

std::ostream& operator<<(std::ostream& os, const String& str) {
    return os << static_cast<const char*>(str.getCString());
}

}  // namespace Pegasus
