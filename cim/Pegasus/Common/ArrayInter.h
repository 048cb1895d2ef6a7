// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>
#include <tavqz/RefCount.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

// The bodies of Array; the library holds those for the types of the interface.

namespace Pegasus {

template <class T>
struct Array<T>::Rep {
    explicit Rep(Uint32 room) : capacity(room), items(std::allocator<T>().allocate(room)) {}
    Rep(const Rep&) = delete;
    Rep& operator=(const Rep&) = delete;
    ~Rep() {
        std::destroy_n(items, size);
        std::allocator<T>().deallocate(items, capacity);
    }

    // There must be room.
    void add(const T* x, Uint32 count) {
        std::uninitialized_copy_n(x, count, items + size);
        size += count;
    }

    QZ::RefCount handles;
    Uint32 size = 0;
    const Uint32 capacity;
    T* const items;
};

template <class T>
Array<T>::Array(const Array& x) noexcept : _rep(x._rep) {
    if (_rep)
        _rep->handles.retain();
}

template <class T>
Array<T>::Array(Uint32 size) {
    grow(size, T());
}

template <class T>
Array<T>::Array(Uint32 size, const T& x) {
    grow(size, x);
}

template <class T>
Array<T>::Array(const T* items, Uint32 size) {
    append(items, size);
}

template <class T>
Array<T>::~Array() {
    clear();
}

template <class T>
Array<T>& Array<T>::operator=(const Array& x) noexcept {
    if (this != &x) {
        // x may be an element of what goes.
        Array copy(x);
        swap(copy);
    }
    return *this;
}

template <class T>
void Array<T>::clear() noexcept {
    Rep* rep = std::exchange(_rep, nullptr);
    if (rep && rep->handles.release())
        delete rep;
}

template <class T>
void Array<T>::swap(Array& x) noexcept {
    std::swap(_rep, x._rep);
}

template <class T>
Uint32 Array<T>::size() const noexcept {
    return _rep ? _rep->size : 0;
}

template <class T>
Uint32 Array<T>::getCapacity() const noexcept {
    return _rep ? _rep->capacity : 0;
}

template <class T>
const T* Array<T>::getData() const noexcept {
    return _rep ? _rep->items : nullptr;
}

template <class T>
const T& Array<T>::operator[](Uint32 index) const {
    if (index >= size())
        throw IndexOutOfBoundsException();
    return _rep->items[index];
}

template <class T>
T& Array<T>::operator[](Uint32 index) {
    if (index >= size())
        throw IndexOutOfBoundsException();
    if (!_rep->handles.isUnique())
        _rebuild(_rep->size, index, 0, nullptr, 0);
    return _rep->items[index];
}

template <class T>
void Array<T>::reserveCapacity(Uint32 capacity) {
    if (capacity > getCapacity())
        _rebuild(capacity, size(), 0, nullptr, 0);
}

template <class T>
void Array<T>::grow(Uint32 size, const T& x) {
    // Keeps the storage that x may be in.
    Array before;
    if (!_hasRoom(size)) {
        before = *this;
        _rebuild(_roomFor(size), this->size(), 0, nullptr, 0);
    }
    std::uninitialized_fill_n(_rep->items + _rep->size, size, x);
    _rep->size += size;
}

template <class T>
void Array<T>::append(const T& x) {
    append(&x, 1);
}

template <class T>
void Array<T>::append(const T* x, Uint32 size) {
    if (_hasRoom(size))
        _rep->add(x, size);
    else
        _rebuild(_roomFor(size), this->size(), 0, x, size);
}

template <class T>
void Array<T>::appendArray(const Array& x) {
    append(x.getData(), x.size());
}

template <class T>
void Array<T>::prepend(const T& x) {
    insert(0, &x, 1);
}

template <class T>
void Array<T>::prepend(const T* x, Uint32 size) {
    insert(0, x, size);
}

template <class T>
void Array<T>::insert(Uint32 index, const T& x) {
    insert(index, &x, 1);
}

template <class T>
void Array<T>::insert(Uint32 index, const T* x, Uint32 size) {
    if (index > this->size())
        throw IndexOutOfBoundsException();
    _rebuild(_roomFor(size), index, 0, x, size);
}

template <class T>
void Array<T>::remove(Uint32 index) {
    remove(index, 1);
}

template <class T>
void Array<T>::remove(Uint32 index, Uint32 size) {
    if (size == 0)
        return;
    if (index > this->size() || size > this->size() - index)
        throw IndexOutOfBoundsException();
    if (!_rep->handles.isUnique()) {
        _rebuild(_rep->size, index, size, nullptr, 0);
        return;
    }
    T* const end = _rep->items + _rep->size;
    std::destroy(std::move(_rep->items + index + size, end, _rep->items + index), end);
    _rep->size -= size;
}

// True where so many more elements can be added without another allocation.
template <class T>
bool Array<T>::_hasRoom(Uint32 more) const noexcept {
    return _rep && _rep->handles.isUnique() && _rep->capacity - _rep->size >= more;
}

template <class T>
Uint32 Array<T>::_roomFor(Uint32 more) const {
    const Uint32 most = Uint32(-1);
    if (more > most - size())
        throw std::bad_alloc();
    const Uint32 doubled = size() > most / 2 ? most : size() * 2;
    return std::max(size() + more, doubled);
}

// Moves on to storage of its own, with x in the place of what is removed. The old storage goes
// last, because x may lie in it.
template <class T>
void Array<T>::_rebuild(Uint32 capacity, Uint32 index, Uint32 removed, const T* x, Uint32 added) {
    auto fresh = std::make_unique<Rep>(capacity);
    if (_rep)
        fresh->add(_rep->items, index);
    fresh->add(x, added);
    if (_rep)
        fresh->add(_rep->items + index + removed, _rep->size - index - removed);
    clear();
    _rep = fresh.release();
}

}  // namespace Pegasus
