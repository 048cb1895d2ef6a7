// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// Any bytes as the product data of a PCI board: what is told stands in them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "PciVpd.h"

namespace {

void _require(bool promise) {
    if (!promise) {
        std::abort();
    }
}

void _readText(const std::string& text, const std::string& bytes) {
    _require(bytes.find(text) != std::string::npos);
    _require(text.empty() || (text.front() != ' ' && text.back() != '\0'));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const QZ::PciVpd vpd = QZ::decodePciVpd(bytes);
    for (const std::string& text :
         {vpd.product, vpd.partNumber, vpd.serialNumber, vpd.manufacturer})
        _readText(text, bytes);
    return 0;
}
