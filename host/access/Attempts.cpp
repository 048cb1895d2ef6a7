// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Attempts.h"

#include <algorithm>

#include "Clock.h"

namespace QZ {

using std::chrono::milliseconds;

milliseconds Attempts::_waitAfter(unsigned count) const {
    if (count < _limits.free) {
        return milliseconds(0);
    }
    milliseconds wait = _limits.first;
    for (unsigned i = _limits.free; i < count && wait < _limits.longest; ++i) {
        wait *= 2;
    }
    return std::min(wait, _limits.longest);
}

// Of those that are forgotten anyway, all; of others, the one that waits least.
void Attempts::_makeRoom(std::int64_t now) {
    if (_entries.size() < _limits.entries) {
        return;
    }
    for (auto entry = _entries.begin(); entry != _entries.end();) {
        const bool isOver = now - entry->second.last >= _limits.memory.count();
        entry = isOver ? _entries.erase(entry) : std::next(entry);
    }
    if (_entries.size() >= _limits.entries) {
        _entries.erase(std::min_element(_entries.begin(), _entries.end(),
                                        [](const auto& left, const auto& right) {
                                            return left.second.openAt < right.second.openAt;
                                        }));
    }
}

milliseconds Attempts::begin(const std::string& peer, const std::string& user) {
    const std::int64_t now = Clock::current().milliseconds();
    auto found = _entries.find({peer, user});
    if (found != _entries.end() && now - found->second.last >= _limits.memory.count()) {
        found->second = {};
    }
    if (found == _entries.end()) {
        _makeRoom(now);
        found = _entries.emplace(Key{peer, user}, Entry{}).first;
    }
    Entry& entry = found->second;
    if (now < entry.openAt) {
        return milliseconds(entry.openAt - now);
    }
    ++entry.count;
    entry.last = now;
    entry.openAt = now + _waitAfter(entry.count).count();
    return milliseconds(0);
}

void Attempts::succeed(const std::string& peer, const std::string& user) {
    _entries.erase({peer, user});
}

void Attempts::takeBack(const std::string& peer, const std::string& user) {
    const auto found = _entries.find({peer, user});
    if (found == _entries.end()) {
        return;
    }
    Entry& entry = found->second;
    entry.count -= entry.count > 0 ? 1 : 0;
    entry.openAt = std::min(entry.openAt, entry.last + _waitAfter(entry.count).count());
    if (entry.count == 0) {
        _entries.erase(found);
    }
}

unsigned Attempts::count(const std::string& peer, const std::string& user) const {
    const auto found = _entries.find({peer, user});
    return found == _entries.end() ? 0 : found->second.count;
}

}  // namespace QZ
