// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlMemory.h"

#include <cstring>
#include <new>

namespace QZ {

namespace {

#if defined(__has_feature)
constexpr bool IS_WATCHED = __has_feature(address_sanitizer);
#elif defined(__SANITIZE_ADDRESS__)
constexpr bool IS_WATCHED = true;
#else
constexpr bool IS_WATCHED = false;
#endif

// Before each block stands its size.
constexpr std::size_t HEAD = alignof(std::max_align_t);

std::size_t _sizeOf(const void* block) {
    std::size_t size = 0;
    std::memcpy(&size, static_cast<const char*>(block) - HEAD, sizeof size);
    return size;
}

}  // namespace

thread_local XmlMemory* XmlMemory::_current = nullptr;

const XML_Memory_Handling_Suite* XmlMemory::suite() {
    static const XML_Memory_Handling_Suite SUITE = {
        [](std::size_t size) { return _current->_allocate(size); },
        [](void* block, std::size_t size) { return _current->_reallocate(block, size); },
        [](void* /*block*/) {}};
    return IS_WATCHED ? nullptr : &SUITE;
}

// Null where there is none left, as malloc.
void* XmlMemory::_allocate(std::size_t size) {
    try {
        char* const head = static_cast<char*>(_resource.allocate(HEAD + size, HEAD));
        std::memcpy(head, &size, sizeof size);
        return head + HEAD;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* XmlMemory::_reallocate(void* block, std::size_t size) {
    const std::size_t old = block ? _sizeOf(block) : 0;
    if (block && size <= old) {
        return block;
    }
    void* const larger = _allocate(size);
    if (block && larger) {
        std::memcpy(larger, block, old);
    }
    return larger;
}

}  // namespace QZ
