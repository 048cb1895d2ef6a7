// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "RegistryText.h"

using namespace QZ;

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

bool isSame(const RegistryValue& left, const RegistryValue& right) {
    return left.kind == right.kind && left.text == right.text && left.number == right.number;
}

// What may stand as a key, a name or a text: of any length but none, without what parts entries.
std::string name(const std::string& bytes) {
    std::string result = "n";
    for (const char c : bytes) {
        result += std::string("\r\n=&][\" \t").find(c) == std::string::npos ? c : '_';
    }
    return result;
}

// Whether `after` is `before` with something put in at one place.
bool isInsertion(const std::string& before, const std::string& after) {
    std::size_t start = 0;
    while (start < before.size() && start < after.size() && before[start] == after[start])
        ++start;
    std::size_t end = 0;
    while (end < before.size() && end < after.size() &&
           before[before.size() - 1 - end] == after[after.size() - 1 - end])
        ++end;
    return after.size() >= before.size() && start + end >= before.size();
}

}  // namespace

// The input is a key, a value's name, its data and a file's text: the first three after a byte for
// their length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    const auto take = [&text] {
        const std::size_t length = text.empty() ? 0 : static_cast<unsigned char>(text[0]) % 16;
        const std::string taken = text.substr(0, length + 1);
        text.erase(0, taken.size());
        return taken.empty() ? taken : taken.substr(1);
    };
    const std::string key = take();
    const std::string valueName = take();
    const std::string value = take();

    RegistryText registry(text);
    const RegistryValue found = registry.find(key, valueName);
    require(found.kind == RegistryValue::Text || found.text.empty());
    require(found.kind == RegistryValue::Number || found.number == 0);
    require(found.number <= 0xFFFFFFFFUL);
    require(found.text == lowerCased(found.text) && found.text.find('&') == std::string::npos);
    require(found.kind == RegistryValue::None || registry.contains(RegistryText::header(key)));
    require(registry.text() == text);

    const std::string entry = name(valueName) + "=string&" + name(value) + "&";
    registry.set(name(key), name(valueName), entry.substr(entry.find('=') + 1));
    const std::string written = registry.text();
    require(written.find(entry) != std::string::npos);
    require(registry.contains(RegistryText::header(name(key))));
    require(isSame(registry.find(key, valueName), RegistryText(written).find(key, valueName)));
    // Where there was no entry none is lost, and where no text runs on over lines the entry that
    // was written is the one that is replaced.
    require(text.find('=') != std::string::npos || isInsertion(text, written));
    if (text.find('&') == std::string::npos) {
        registry.set(name(key), name(valueName), entry.substr(entry.find('=') + 1));
        require(registry.text() == written);
    }
    return 0;
}
