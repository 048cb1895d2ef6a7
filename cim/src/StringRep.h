// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Char16.h>
#include <tavqz/RefCount.h>

#include <cstring>
#include <memory>
#include <new>

namespace Pegasus {

// The units of a String; they follow in the same allocation, with a NUL after the last.
struct StringRep {
    explicit StringRep(Uint32 room) : size(0), capacity(room) { setSize(0); }

    Char16* units() { return reinterpret_cast<Char16*>(this + 1); }

    void setSize(Uint32 count) {
        size = count;
        units()[count] = Char16();
    }

    // There must be room; x may lie in these units.
    void add(const Char16* x, Uint32 count) {
        std::memmove(static_cast<void*>(units() + size), x, count * sizeof(Char16));
        setSize(size + count);
    }

    QZ::RefCount handles;
    Uint32 size;
    const Uint32 capacity;
};
static_assert(sizeof(StringRep) % alignof(Char16) == 0);

// Lets one handle go; the last takes the representation with it.
struct StringRepRelease {
    void operator()(StringRep* rep) const noexcept {
        if (rep->handles.release()) {
            rep->~StringRep();
            ::operator delete(rep);
        }
    }
};
using StringRepHandle = std::unique_ptr<StringRep, StringRepRelease>;

inline StringRepHandle makeStringRep(Uint32 capacity) {
    constexpr std::size_t most = (std::size_t(-1) - sizeof(StringRep)) / sizeof(Char16) - 1;
    const std::size_t count = capacity;
    if (count > most)
        throw std::bad_alloc();
    void* const place = ::operator new(sizeof(StringRep) + (count + 1) * sizeof(Char16));
    return StringRepHandle(new (place) StringRep(capacity));
}

}  // namespace Pegasus
