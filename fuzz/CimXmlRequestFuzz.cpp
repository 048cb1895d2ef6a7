// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "CimRequest.h"
#include "CimRequestWriter.h"

// A request that can be read is written, and read again, as the same text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace QZ;
    const XmlLimits limits;
    std::string text;
    try {
        text = encodeRequest(
            decodeRequest(std::string_view(reinterpret_cast<const char*>(data), size), limits));
    } catch (const CimBadRequest&) {
        return 0;
    } catch (const CimRefusal&) {
        return 0;
    }
    try {
        if (encodeRequest(decodeRequest(text, limits)) != text) {
            std::abort();
        }
    } catch (const CimBadRequest&) {
        std::abort();
    } catch (const CimRefusal&) {
        std::abort();
    }
    return 0;
}
