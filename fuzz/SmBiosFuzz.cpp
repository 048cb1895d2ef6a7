// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "SmBiosDecoder.h"

namespace {

void _require(bool promise) {
    if (!promise) {
        std::abort();
    }
}

// Touches all that the structure offers. Its size, as far as its formatted area and texts go.
std::size_t _read(const QZ::SmBios::Table& table) {
    _require(table.getLength() >= 4);
    _require(table.getByte(0) == table.getType() && table.getByte(1) == table.getLength());
    for (std::size_t offset = 0; offset < 300; ++offset) {
        _require(table.getByte(offset) == 0 || offset < table.getLength());
    }
    std::size_t size = table.getLength();
    _require(table.getString(0) == nullptr);
    bool ended = false;
    for (unsigned index = 1; index < 300; ++index) {
        const char* text = table.getString(index);
        _require(text == nullptr || !ended);
        ended = text == nullptr;
        if (!ended) {
            _require(*text != '\0');
            size += std::strlen(text) + 1;
        }
    }
    return size;
}

}  // namespace

// The first byte is the length of the entry point, which follows it; the rest is the table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t split = size == 0 ? 0 : std::min<std::size_t>(size - 1, data[0]);
    const std::string entryPoint = input.substr(std::min<std::size_t>(size, 1), split);
    const std::string table = input.substr(std::min<std::size_t>(size, 1 + split));

    const QZ::SmBios::Contents contents = QZ::decodeSmBios(entryPoint, table);

    using State = QZ::SmBios::State;
    _require((contents.state == State::Failed) == contents.tables.empty());
    _require((contents.state == State::Ok) == contents.reason.empty());
    std::size_t total = 0;
    for (const QZ::SmBios::Table& structure : contents.tables) {
        total += _read(structure);
    }
    _require(total <= table.size());

    // An entry point decides what is said of the structures, never that one is lost.
    _require(QZ::decodeSmBios({}, table).tables.size() <= contents.tables.size());
    return 0;
}
