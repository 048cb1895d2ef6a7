// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace QZ {

// Counts the handles that share one representation; starts with one. Any thread may call.
class RefCount {
public:
    void retain() noexcept { _count.fetch_add(1, std::memory_order_relaxed); }
    // True for the last handle: the caller then deletes the representation.
    bool release() noexcept { return _count.fetch_sub(1, std::memory_order_acq_rel) == 1; }
    // True where the caller's handle is the only one, so that it may change what it holds.
    bool isUnique() const noexcept { return _count.load(std::memory_order_acquire) == 1; }

private:
    std::atomic<unsigned> _count{1};
};

}  // namespace QZ
