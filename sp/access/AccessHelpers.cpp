// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/AccessHelpers.h"

#include <ctime>

#include "Clock.h"

void openLog() {}

void initLog(char* /*name*/) {}

void closeLog() {}

void IncrementLibraryUsageCount() {}

int dumpdata(unsigned char* /*data*/) {
    return 0;
}

char* getSysTime(char* buffer, int size) {
    if (size <= 0) {
        return buffer;
    }
    const auto now = static_cast<std::time_t>(QZ::Clock::current().seconds());
    std::tm local{};
    if (localtime_r(&now, &local) == nullptr ||
        std::strftime(buffer, static_cast<std::size_t>(size), "%d %b %y %H:%M:%S", &local) == 0) {
        buffer[0] = '\0';
    }
    return buffer;
}

std::uint16_t getUShortFromBufferLSBFirst(unsigned char* buffer, int offset) {
    const unsigned char* bytes = buffer + offset;
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t getULongFromBufferLSBFirst(unsigned char* buffer, int offset) {
    const unsigned char* bytes = buffer + offset;
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

std::uint32_t getULongFromBufferMSBFirst(unsigned char* buffer, int offset) {
    const unsigned char* bytes = buffer + offset;
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

void bytesToString(unsigned char* buffer, int offset, int count, unsigned char* out) {
    static const char digits[] = "0123456789ABCDEF";
    const unsigned char* bytes = buffer + offset;
    for (int i = 0; i < count; ++i) {
        *out++ = static_cast<unsigned char>(digits[bytes[i] >> 4]);
        *out++ = static_cast<unsigned char>(digits[bytes[i] & 0xF]);
    }
}
