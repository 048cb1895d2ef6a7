// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <utility>

namespace QZ {

// Owns a file descriptor. A negative one is none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : _descriptor(descriptor) {}
    ~Descriptor() {
        if (isOpen())
            ::close(_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : _descriptor(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        Descriptor moved(std::move(other));
        std::swap(_descriptor, moved._descriptor);
        return *this;
    }

    bool isOpen() const { return _descriptor >= 0; }
    int get() const { return _descriptor; }

    // The caller's to close from now on.
    int release() { return std::exchange(_descriptor, -1); }

private:
    int _descriptor = -1;
};

}  // namespace QZ
