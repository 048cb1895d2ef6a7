// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstring>

#include "tavqz/AssetFlat.h"

namespace {

enum Tag : std::int32_t { INTEGER, STRING, INTEGER_ARRAY, STRING_ARRAY };

// Behind what it wrote: items follow one another without padding.
char* _put(void* at, std::int32_t value) {
    std::memcpy(at, &value, sizeof value);
    return static_cast<char*>(at) + sizeof value;
}

char* _putString(void* at, const std::string& value) {
    char* const text = _put(_put(at, STRING), static_cast<std::int32_t>(value.size()));
    std::memcpy(text, value.c_str(), value.size() + 1);
    return text + value.size() + 1;
}

}  // namespace

void* packI(void* at, int value) {
    return _put(_put(at, INTEGER), value);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers know it so
void* packS(void* at, std::string value) {
    return _putString(at, value);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers know it so
void* packAI(void* at, std::vector<int> values) {
    void* end = _put(_put(at, INTEGER_ARRAY), static_cast<std::int32_t>(values.size()));
    for (const int value : values) {
        end = packI(end, value);
    }
    return end;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers know it so
void* packAS(void* at, std::vector<std::string> values) {
    void* end = _put(_put(at, STRING_ARRAY), static_cast<std::int32_t>(values.size()));
    for (const std::string& value : values) {
        end = _putString(end, value);
    }
    return end;
}
