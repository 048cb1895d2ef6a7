// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Any bytes as MOF are read or refused with a place; any bytes written as a string literal read
// back as what was written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ClassRepository.h"
#include "MofParser.h"
#include "MofText.h"
#include "Registration.h"

namespace {

void _read(const std::string& text) {
    try {
        const QZ::MofDocument document = QZ::parseMof(text, "fuzz.mof");
        QZ::ClassRepository().add(document);
        QZ::Registration().add(document);
    } catch (const QZ::MofError&) {
        // What is no model is refused.
    }
}

void _writeAndReadBack(const std::string& text) {
    const std::string literal = QZ::mofString(text);
    const QZ::MofDocument document =
        QZ::parseMof("instance of A { P = " + literal + "; };", "fuzz.mof");
    // Bytes that are no UTF-8 were replaced: the second writing has none left to replace.
    if (QZ::mofString(document.instances.at(0).find("P")->text) != literal) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    _read(text);
    _writeAndReadBack(text);
    return 0;
}
