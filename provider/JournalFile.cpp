// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "JournalFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "Descriptor.h"
#include "FileReplacement.h"

namespace QZ {

namespace {

constexpr std::size_t _longestLine = 255;

// A regular file only: opening a pipe would wait for its other end.
Descriptor _openForReading(const std::string& path) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return Descriptor();
    return file;
}

void _parseLine(const std::string& line, JournalStates& states) {
    const std::size_t blank = line.find(' ');
    if (line.size() > _longestLine || blank == 0 || blank == std::string::npos)
        return;
    int state = 0;
    const char* const end = line.data() + line.size();
    const auto [stop, error] = std::from_chars(line.data() + blank + 1, end, state);
    if (error == std::errc() && stop == end)
        states.emplace(line.substr(0, blank), state);
}

}  // namespace

JournalStates readJournal(const std::string& path) {
    JournalStates states;
    const Descriptor file = _openForReading(path);
    std::array<char, 4096> buffer{};
    std::string line;
    for (;;) {
        const ssize_t got = ::read(file.get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        for (const char c : std::string_view(buffer.data(), static_cast<std::size_t>(got))) {
            if (c == '\n') {
                _parseLine(line, states);
                line.clear();
            } else if (line.size() <= _longestLine) {
                // One more than a line may have tells that it is too long.
                line += c;
            }
        }
    }
    _parseLine(line, states);
    return states;
}

void writeJournal(const std::string& path, const JournalStates& states) {
    std::string text;
    for (const auto& [key, state] : states) {
        text += key;
        text += ' ';
        text += std::to_string(state);
        text += '\n';
    }
    replaceFile(path, text);
}

}  // namespace QZ
