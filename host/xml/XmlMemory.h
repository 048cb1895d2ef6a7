// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <expat.h>

#include <cstddef>
#include <memory_resource>

namespace QZ {

// What expat allocates for one document: many small things, which go together with their parser. A
// block that grows leaves the old one behind, so that this holds a few times what is in use. The
// parser is used, and ended before this, on the thread that made it; one at a time there.
class XmlMemory {
public:
    XmlMemory() { _current = this; }
    ~XmlMemory() { _current = _previous; }
    XmlMemory(const XmlMemory&) = delete;
    XmlMemory& operator=(const XmlMemory&) = delete;

    // For XML_ParserCreate_MM: allocates from the newest one on this thread. Null, for expat's own
    // way, under address sanitizer, which is to see each block by itself.
    static const XML_Memory_Handling_Suite* suite();

private:
    void* _allocate(std::size_t size);
    void* _reallocate(void* block, std::size_t size);

    static thread_local XmlMemory* _current;
    XmlMemory* const _previous = _current;

    std::pmr::monotonic_buffer_resource _resource{std::size_t(16) << 10};  // enough for most
};

}  // namespace QZ
