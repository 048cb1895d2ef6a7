// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "JournalFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "Descriptor.h"
#include "Error.h"
#include "FileReplacement.h"

namespace QZ {

namespace {

constexpr std::size_t _longestLine = 255;
constexpr const char* _blanks = " \t\v\f\r";

// None for anything else: a pipe would wait for its other end.
Descriptor _openRegular(const std::string& path, int mode) {
    Descriptor file(::open(path.c_str(), mode | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return Descriptor();
    return file;
}

// A word and a number, as scanf's "%s %d" reads them: what follows the number does not matter.
void _parseLine(std::string_view line, JournalStates& states) {
    if (line.size() > _longestLine)
        return;
    const auto skipTo = [&line](std::size_t place) {
        line.remove_prefix(std::min(place, line.size()));
    };
    line = line.substr(0, line.find('\0'));
    skipTo(line.find_first_not_of(_blanks));
    const std::string key(line.substr(0, line.find_first_of(_blanks)));
    skipTo(key.size());
    skipTo(line.find_first_not_of(_blanks));
    if (line.size() > 1 && line[0] == '+' && line[1] != '-')
        line.remove_prefix(1);
    int state = 0;
    const auto [stop, error] = std::from_chars(line.data(), line.data() + line.size(), state);
    if (error == std::errc())
        states.emplace(key, state);
}

// Cut to its length last, so that a failed write loses as little as can be.
bool _writeInPlace(const std::string& path, std::string_view text) {
    const Descriptor file = _openRegular(path, O_WRONLY | O_NOFOLLOW);
    const auto length = static_cast<off_t>(text.size());
    while (!text.empty()) {
        const ssize_t written = ::write(file.get(), text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return false;
    }
    return ::ftruncate(file.get(), length) == 0 && ::fsync(file.get()) == 0;
}

}  // namespace

JournalStates readJournal(const std::string& path) {
    JournalStates states;
    const Descriptor file = _openRegular(path, O_RDONLY);
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
    try {
        replaceFile(path, text);
    } catch (const Error&) {
        // Its folder may be read-only, or full, where the file itself is not.
        if (!_writeInPlace(path, text))
            throw;
    }
}

}  // namespace QZ
