// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "PropertyText.h"
#include "Text.h"

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

std::string withoutTrailingNuls(const std::string& text) {
    return text.substr(0, text.find_last_not_of('\0') + 1);
}

}  // namespace

// The input is a key, a value and a file's text: the first two after a byte for their length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    const auto take = [&text] {
        const std::size_t length = text.empty() ? 0 : static_cast<unsigned char>(text[0]) % 16;
        const std::string taken = text.substr(0, length + 1);
        text.erase(0, taken.size());
        return taken.empty() ? taken : taken.substr(1);
    };
    const std::string key = take();
    const std::string value = take();

    QZ::PropertyText properties(text);
    require(properties.isDamaged() || properties.compose() == text);
    properties.set(key, value, size % 2 == 1);
    require(properties.get(key) == withoutTrailingNuls(value));
    const QZ::PropertyText again(properties.compose());
    require(!again.isDamaged() && again.get(key) == withoutTrailingNuls(value));
    require(again.compose() == properties.compose());
    require(QZ::make_string(QZ::make_wstring(text)) == text);
    return 0;
}
