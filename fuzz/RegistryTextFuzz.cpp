// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

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

// What stands behind a section's header, in lower case, and all that stands behind the section.
struct Section {
    std::string own;
    std::string rest;
};

Section section(const RegistryText& registry, const std::string& key) {
    const std::string text = lowerCased(registry.text());
    const std::string header = RegistryText::header(key);
    const std::size_t at = text.find(header);
    if (at == std::string::npos)
        return {};
    const std::size_t begin = at + header.size();
    const std::size_t end = std::min(text.find("[hkey_local_machine", begin), text.size());
    return {text.substr(begin, end - begin), registry.text().substr(end)};
}

// A section's lines that begin an entry, but those of the name that is left out.
std::vector<std::string> entries(const std::string& own, const std::string& leftOut) {
    std::vector<std::string> found;
    std::string line;
    for (const char c : own + '\n') {
        if (c != '\r' && c != '\n') {
            line += c;
            continue;
        }
        const std::size_t sign = line.find('=');
        const std::string data = sign == std::string::npos ? "" : line.substr(sign + 1);
        const std::string bare = line.substr(0, sign);
        const std::size_t first = bare.find_first_not_of(" \t\"");
        const bool isOther =
            first == std::string::npos ||
            bare.substr(first, bare.find_last_not_of(" \t\"") - first + 1) != lowerCased(leftOut);
        if (isOther && (data.rfind("string", 0) == 0 || data.rfind("dword", 0) == 0))
            found.push_back(line);
        line.clear();
    }
    return found;
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

    const Section before = section(registry, name(key));
    const std::string entry = name(valueName) + "=string&" + name(value) + "&";
    registry.set(name(key), name(valueName), entry.substr(entry.find('=') + 1));
    const std::string written = registry.text();
    require(written.find(entry) != std::string::npos);
    require(registry.contains(RegistryText::header(name(key))));
    require(isSame(registry.find(key, valueName), RegistryText(written).find(key, valueName)));
    // No other section changes, and of its own no other entry, nor where the next one begins.
    const Section after = section(registry, name(key));
    require(before.own.empty() || before.own.back() != '\n' || after.own.back() == '\n');
    require(after.rest == before.rest);
    require(entries(after.own, name(valueName)) == entries(before.own, name(valueName)));
    // Where there was no entry none is lost, and where no text runs on over lines the entry that
    // was written is the one that is replaced.
    require(text.find('=') != std::string::npos || isInsertion(text, written));
    if (text.find('&') == std::string::npos) {
        registry.set(name(key), name(valueName), entry.substr(entry.find('=') + 1));
        require(registry.text() == written);
    }
    return 0;
}
