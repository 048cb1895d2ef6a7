// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LineScan.h"

#include <algorithm>

namespace QZ {
namespace {

// Of the C locale: the server's own may know more.
bool _isWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace

FileContent readLines(const std::string& path, std::size_t limit) {
    FileContent content = readFileStart(path, limit + 1);
    if (content.text.size() > limit) {
        content.text.erase(content.text.rfind('\n', limit - 1) + 1);
    }
    return content;
}

bool takeLine(const std::string& text, std::size_t& offset, std::string& line) {
    if (offset >= text.size()) {
        return false;
    }
    const std::size_t end = std::min(text.find('\n', offset), text.size());
    line.assign(text, offset, end - offset);
    // What follows a NUL is no text.
    line.resize(std::min(line.find('\0'), line.size()));
    offset = end + 1;
    return true;
}

bool scanValue(const std::string& line, const char* format, std::string& value) {
    std::size_t at = 0;
    for (; *format != '\0'; ++format) {
        if (_isWhiteSpace(*format)) {
            while (at < line.size() && _isWhiteSpace(line[at])) {
                ++at;
            }
        } else if (at == line.size() || line[at++] != *format) {
            return false;
        }
    }
    if (at == line.size()) {
        return false;
    }
    value.assign(line, at, std::string::npos);
    return true;
}

}  // namespace QZ
