// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Exception.h>

#include <atomic>
#include <cstddef>
#include <vector>

namespace Pegasus {

// How many lists hold a representation, which keeps its name as long as there are any. A copy
// starts without. Lists that share what they hold may be made and go on different threads.
class CimOwnerCount {
public:
    CimOwnerCount() = default;
    CimOwnerCount(const CimOwnerCount&) {}
    CimOwnerCount& operator=(const CimOwnerCount&) = delete;
    ~CimOwnerCount() = default;

    void add() { _count.fetch_add(1, std::memory_order_relaxed); }
    void drop() { _count.fetch_sub(1, std::memory_order_relaxed); }
    bool isNone() const { return _count.load(std::memory_order_relaxed) == 0; }

private:
    std::atomic<Uint32> _count{0};
};

// The qualifiers or properties of something: in order, no two with the same name. Counts itself
// in the `owners` of the representations that it holds. Copying the list clones what it holds.
template <class Handle>
class CimOwnedList {
public:
    CimOwnedList() = default;
    CimOwnedList(const CimOwnedList& x) {
        _handles.reserve(x._handles.size());
        for (const Handle& handle : x._handles)
            _append(handle.clone());
    }
    CimOwnedList& operator=(const CimOwnedList&) = delete;
    ~CimOwnedList() {
        for (const Handle& handle : _handles)
            handle._rep->owners.drop();
    }

    Uint32 size() const { return static_cast<Uint32>(_handles.size()); }

    Uint32 find(const CIMName& name) const {
        for (Uint32 i = 0; i < size(); ++i) {
            if (_handles[i]._rep->name.equal(name))
                return i;
        }
        return PEG_NOT_FOUND;
    }

    const Handle& operator[](Uint32 index) const {
        if (index >= size())
            throw IndexOutOfBoundsException();
        return _handles[index];
    }

    // `kind` says in the message of the AlreadyExistsException what it is that already exists.
    void add(const Handle& handle, const char* kind) {
        const CIMName& name = handle.getName();
        if (find(name) != PEG_NOT_FOUND)
            throw AlreadyExistsException(String(kind) + " \"" + name.getString() + "\"");
        _append(handle);
    }

    void remove(Uint32 index) {
        (*this)[index]._rep->owners.drop();
        _handles.erase(_handles.begin() + static_cast<std::ptrdiff_t>(index));
    }

    void clear() {
        while (size() > 0)
            remove(size() - 1);
    }

    Boolean identical(const CimOwnedList& x) const {
        if (size() != x.size())
            return false;
        for (Uint32 i = 0; i < size(); ++i) {
            if (!_handles[i].identical(x._handles[i]))
                return false;
        }
        return true;
    }

private:
    void _append(const Handle& handle) {
        if (_handles.capacity() == 0)
            _handles.reserve(8);  // as many as most have
        _handles.push_back(handle);
        handle._rep->owners.add();
    }

    std::vector<Handle> _handles;
};

}  // namespace Pegasus
