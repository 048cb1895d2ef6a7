// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMObjectPath.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// A path that can be read has a text that reads back to an equal path with the same text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Pegasus;
    try {
        const String text(reinterpret_cast<const char*>(data), static_cast<Uint32>(size));
        const CIMObjectPath path(text);
        const CIMObjectPath again(path.toString());
        if (path != again || path.makeHashCode() != again.makeHashCode() ||
            path.toString() != again.toString())
            std::abort();
    } catch (const Exception&) {
        // No UTF-8, or no path.
    }
    return 0;
}
