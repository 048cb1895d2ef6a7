// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// A growing sequence. An index or a range beyond the end throws IndexOutOfBoundsException.
//
// A value: a copy is independent of its original (elements that are handles go on sharing what they
// stand for). Copies share storage until one changes, so that passing them around is cheap.
// Different threads may use different Arrays at the same time, copies of one another included.
template <class T>
class Array {
public:
    Array() noexcept = default;
    Array(const Array& x) noexcept;
    // Elements made by their default constructor.
    Array(Uint32 size);
    Array(Uint32 size, const T& x);
    Array(const T* items, Uint32 size);
    ~Array();
    Array& operator=(const Array& x) noexcept;

    void clear() noexcept;
    void reserveCapacity(Uint32 capacity);
    void grow(Uint32 size, const T& x);
    void swap(Array& x) noexcept;

    Uint32 size() const noexcept;
    Uint32 getCapacity() const noexcept;
    // Null where there is no storage; valid until the Array changes or goes.
    const T* getData() const noexcept;

    // The reference is valid until the Array changes, is copied or goes.
    T& operator[](Uint32 index);
    const T& operator[](Uint32 index) const;

    // What is added may be a part of this Array.
    void append(const T& x);
    void append(const T* x, Uint32 size);
    void appendArray(const Array& x);
    void prepend(const T& x);
    void prepend(const T* x, Uint32 size);
    void insert(Uint32 index, const T& x);
    void insert(Uint32 index, const T* x, Uint32 size);
    void remove(Uint32 index);
    void remove(Uint32 index, Uint32 size);

private:
    struct Rep;

    bool _hasRoom(Uint32 more) const noexcept;
    Uint32 _roomFor(Uint32 more) const;
    void _rebuild(Uint32 capacity, Uint32 index, Uint32 removed, const T* x, Uint32 added);

    // Shared by copies until one changes; null for an empty Array that never held anything.
    Rep* _rep = nullptr;
};

}  // namespace Pegasus

// Last: the bodies need what is above.
#include <Pegasus/Common/ArrayInter.h>

namespace Pegasus {

extern template class PEGASUS_COMMON_LINKAGE Array<Boolean>;
extern template class PEGASUS_COMMON_LINKAGE Array<Uint8>;
extern template class PEGASUS_COMMON_LINKAGE Array<Sint8>;
extern template class PEGASUS_COMMON_LINKAGE Array<Uint16>;
extern template class PEGASUS_COMMON_LINKAGE Array<Sint16>;
extern template class PEGASUS_COMMON_LINKAGE Array<Uint32>;
extern template class PEGASUS_COMMON_LINKAGE Array<Sint32>;
extern template class PEGASUS_COMMON_LINKAGE Array<Uint64>;
extern template class PEGASUS_COMMON_LINKAGE Array<Sint64>;
extern template class PEGASUS_COMMON_LINKAGE Array<Real32>;
extern template class PEGASUS_COMMON_LINKAGE Array<Real64>;
extern template class PEGASUS_COMMON_LINKAGE Array<Char16>;
extern template class PEGASUS_COMMON_LINKAGE Array<String>;

}  // namespace Pegasus
