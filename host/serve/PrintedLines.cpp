// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PrintedLines.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "Error.h"

namespace QZ {

namespace {

// For the rest of a line to come.
constexpr int PATIENCE_MILLISECONDS = 100;

// Beyond, a line is cut in two.
constexpr std::size_t LONGEST_LINE = std::size_t(64) << 10;

[[noreturn]] void _fail() {
    throw Error("Cannot take what is printed: " + systemErrorText(errno));
}

Descriptor _required(int descriptor) {
    if (descriptor < 0) {
        _fail();
    }
    return Descriptor(descriptor);
}

// Both standard streams go there.
void _redirectTo(int descriptor) {
    (void)std::fflush(stdout);
    if (dup2(descriptor, STDERR_FILENO) < 0 || dup2(descriptor, STDOUT_FILENO) < 0) {
        _fail();
    }
}

}  // namespace

PrintedLines::PrintedLines() : _error(_required(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3))) {
    (void)std::setvbuf(stdout, nullptr, _IONBF, 0);
}

PrintedLines::~PrintedLines() {
    release();
}

void PrintedLines::take(Take take) {
    release();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        _fail();
    }
    _end = Descriptor(ends[0]);
    const Descriptor printed(ends[1]);
    // A program that somebody starts may keep the other end for longer than there is something to
    // read.
    if (fcntl(_end.get(), F_SETFL, O_NONBLOCK) != 0) {
        _fail();
    }
    _released = _required(eventfd(0, EFD_CLOEXEC));
    _take = std::move(take);
    _redirectTo(printed.get());
    _thread = std::thread([this] { _read(); });
}

void PrintedLines::release() {
    if (!_thread.joinable()) {
        return;
    }
    (void)std::fflush(stdout);
    dup2(_error.get(), STDERR_FILENO);
    dup2(_error.get(), STDOUT_FILENO);
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(_released.get(), &one, sizeof one);
    _thread.join();
}

void PrintedLines::_read() {
    std::string text;
    pollfd waiting[2] = {{_end.get(), POLLIN, 0}, {_released.get(), POLLIN, 0}};
    for (bool isReleased = false; !isReleased;) {
        const int count = ::poll(waiting, 2, text.empty() ? -1 : PATIENCE_MILLISECONDS);
        isReleased = count > 0 && waiting[1].revents != 0;
        char part[4096];
        ssize_t size = 0;
        while ((size = ::read(_end.get(), part, sizeof part)) > 0) {
            text.append(part, std::size_t(size));
            _split(text, text.size() > LONGEST_LINE);
        }
        _split(text, count == 0 || isReleased);
    }
}

// Hands over what has ended, or all, and leaves the rest.
void PrintedLines::_split(std::string& text, bool isAll) const {
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
        if (end != begin) {
            _take(text.substr(begin, end - begin));
        }
    }
    text.erase(0, begin);
    if (isAll && !text.empty()) {
        _take(std::exchange(text, {}));
    }
}

void PrintedLines::write(const std::string& line) const {
    const std::string text = line + '\n';
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t count = ::write(_error.get(), text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) {
            return;  // nobody reads it
        }
        done += count > 0 ? std::size_t(count) : 0;
    }
}

}  // namespace QZ
