// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include <algorithm>

#include "AsciiCase.h"

// String: searching and ordering.

namespace Pegasus {

namespace {

Uint32 _place(const Char16* found, const String& text) {
    const Char16* const begin = text.getChar16Data();
    return found == begin + text.size() ? PEG_NOT_FOUND : static_cast<Uint32>(found - begin);
}

int _compare(const Char16* x, Uint32 xSize, const Char16* y, Uint32 ySize, Char16 (*fold)(Char16)) {
    const Uint32 common = std::min(xSize, ySize);
    for (Uint32 i = 0; i < common; ++i) {
        if (const int difference = Uint16(fold(x[i])) - Uint16(fold(y[i])))
            return difference;
    }
    return xSize < ySize ? -1 : xSize > ySize;
}

Char16 _asIs(Char16 unit) {
    return unit;
}

// Copies of one text, which need no comparison.
bool _areShared(const String& s1, const String& s2) {
    return s1.getChar16Data() == s2.getChar16Data();
}

}  // namespace

Uint32 String::find(Char16 c) const {
    return find(0, c);
}

Uint32 String::find(Uint32 index, Char16 c) const {
    if (index > size())
        throw IndexOutOfBoundsException();
    const Char16* const begin = getChar16Data();
    return _place(std::find(begin + index, begin + size(), c), *this);
}

Uint32 String::find(const String& s) const {
    if (s.size() == 0)
        return PEG_NOT_FOUND;
    const Char16* const begin = getChar16Data();
    const Char16* const wanted = s.getChar16Data();
    return _place(std::search(begin, begin + size(), wanted, wanted + s.size()), *this);
}

Uint32 String::reverseFind(Char16 c) const {
    const Char16* const units = getChar16Data();
    for (Uint32 i = size(); i-- > 0;) {
        if (units[i] == c)
            return i;
    }
    return PEG_NOT_FOUND;
}

int String::compare(const String& s1, const String& s2, Uint32 n) {
    return _compare(s1.getChar16Data(), std::min(n, s1.size()), s2.getChar16Data(),
                    std::min(n, s2.size()), _asIs);
}

int String::compare(const String& s1, const String& s2) {
    return compare(s1, s2, Uint32(-1));
}

int String::compareNoCase(const String& s1, const String& s2) {
    return _compare(s1.getChar16Data(), s1.size(), s2.getChar16Data(), s2.size(), QZ::toLowerAscii);
}

Boolean String::equal(const String& s1, const String& s2) {
    return s1.size() == s2.size() && (_areShared(s1, s2) || compare(s1, s2) == 0);
}

Boolean String::equalNoCase(const String& s1, const String& s2) {
    return s1.size() == s2.size() && (_areShared(s1, s2) || compareNoCase(s1, s2) == 0);
}

Boolean operator==(const String& x, const String& y) {
    return String::equal(x, y);
}
Boolean operator==(const String& x, const char* y) {
    return String::equal(x, y);
}
Boolean operator==(const char* x, const String& y) {
    return String::equal(x, y);
}
Boolean operator!=(const String& x, const String& y) {
    return !String::equal(x, y);
}
Boolean operator<(const String& x, const String& y) {
    return String::compare(x, y) < 0;
}
Boolean operator<=(const String& x, const String& y) {
    return String::compare(x, y) <= 0;
}
Boolean operator>(const String& x, const String& y) {
    return String::compare(x, y) > 0;
}
Boolean operator>=(const String& x, const String& y) {
    return String::compare(x, y) >= 0;
}

String operator+(const String& x, const String& y) {
    String sum;
    sum.reserveCapacity(x.size() + y.size());
    return sum.append(x).append(y);
}

}  // namespace Pegasus
