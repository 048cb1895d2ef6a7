// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/Linkage.h>

#include <iosfwd>

namespace Pegasus {

class String;
struct StringRep;

// UTF-8 text made from a String; owns it. Keep the CString as long as the pointer is in use.
class PEGASUS_COMMON_LINKAGE CString {
public:
    CString() noexcept : _rep(nullptr) {}
    CString(const CString& other);
    ~CString();
    CString& operator=(const CString& other);

    // NUL-terminated; null for a CString that was made from no String.
    operator const char*() const noexcept { return _rep; }

private:
    friend class String;
    explicit CString(char* owned) noexcept : _rep(owned) {}

    char* _rep;
};

// CIM text: UTF-16, counted in code units, with NUL inside allowed.
//
// From bytes it takes UTF-8 and throws Exception where that is malformed; halves of surrogate pairs
// pass, in both directions. A null pointer throws Exception too. An index or a count beyond the end
// throws IndexOutOfBoundsException. What throws leaves the String as it was.
//
// A value: a copy is independent of its original. Different threads may use different Strings at
// the same time, copies of one another included; one String belongs to one thread while it changes.
class PEGASUS_COMMON_LINKAGE String {
public:
    static const String EMPTY;

    constexpr String() noexcept : _rep(nullptr) {}
    String(const String& str);
    String(const String& str, Uint32 n);
    String(const Char16* str);
    String(const Char16* str, Uint32 n);
    String(const char* str);
    String(const char* str, Uint32 n);
    ~String();

    String& operator=(const String& str);
    String& assign(const String& str);
    String& assign(const Char16* str);
    String& assign(const Char16* str, Uint32 n);
    String& assign(const char* str);
    String& assign(const char* str, Uint32 n);

    void clear();
    // Room for this many code units without another allocation.
    void reserveCapacity(Uint32 capacity);
    Uint32 size() const;

    // NUL-terminated; valid until the String changes or goes.
    const Char16* getChar16Data() const;
    // The text as UTF-8.
    CString getCString() const;

    // At size() stands a NUL, to be read only. The reference is valid until the String changes, is
    // copied or goes.
    Char16& operator[](Uint32 index);
    Char16 operator[](Uint32 index) const;

    String& append(const Char16& c);
    String& append(const Char16* str, Uint32 n);
    String& append(const String& str);
    // Appends UTF-8 text, formatted as printf does.
    PEGASUS_FORMAT(2, 3) void appendPrintf(const char* format, ...);
    // Without a size, all from index to the end.
    void remove(Uint32 index, Uint32 size = PEG_NOT_FOUND);
    // At most n code units; without n, all from index to the end. Empty from the end on.
    String subString(Uint32 index, Uint32 n = PEG_NOT_FOUND) const;

    // The first place, at or after index where there is one; PEG_NOT_FOUND where there is none.
    // Empty text is found nowhere.
    Uint32 find(Char16 c) const;
    Uint32 find(Uint32 index, Char16 c) const;
    Uint32 find(const String& s) const;
    Uint32 reverseFind(Char16 c) const;

    // Case is that of the ASCII letters: it must not depend on a locale.
    void toLower();

    // Below, at or above 0; by code units.
    static int compare(const String& s1, const String& s2, Uint32 n);
    static int compare(const String& s1, const String& s2);
    static int compareNoCase(const String& s1, const String& s2);
    static Boolean equal(const String& s1, const String& s2);
    static Boolean equalNoCase(const String& s1, const String& s2);

private:
    void _makeOwn(Uint32 capacity);

    // Shared by copies until one changes; null for empty text, so that a String of static storage
    // works before its constructor has run.
    StringRep* _rep;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const String& x, const String& y);
PEGASUS_COMMON_LINKAGE Boolean operator==(const String& x, const char* y);
PEGASUS_COMMON_LINKAGE Boolean operator==(const char* x, const String& y);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const String& x, const String& y);
PEGASUS_COMMON_LINKAGE Boolean operator<(const String& x, const String& y);
PEGASUS_COMMON_LINKAGE Boolean operator<=(const String& x, const String& y);
PEGASUS_COMMON_LINKAGE Boolean operator>(const String& x, const String& y);
PEGASUS_COMMON_LINKAGE Boolean operator>=(const String& x, const String& y);
PEGASUS_COMMON_LINKAGE String operator+(const String& x, const String& y);
// Writes UTF-8.
PEGASUS_COMMON_LINKAGE std::ostream& operator<<(std::ostream& os, const String& str);

}  // namespace Pegasus
