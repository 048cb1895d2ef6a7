// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RestartCounter.h"

#include <algorithm>
#include <limits>

namespace {

// IPMI 2.0, 32.1 and table 42-3: System Boot/Restart Initiated.
constexpr unsigned char _systemEvent = 2;
constexpr unsigned char _restartSensor = 0x1D;
constexpr unsigned char _sensorSpecific = 0x6F;
constexpr std::uint16_t _logEnd = 0xFFFF;

bool _isRestart(const QZ::BmcSelEntry& entry) {
    return entry.type == _systemEvent && entry.sensorType == _restartSensor &&
           entry.eventReadingType == _sensorSpecific && !entry.isDeassertion;
}

}  // namespace

std::uint16_t RestartCounter::count(QZ::Bmc& bmc) {
    const QZ::MutexLock lock(_mutex);
    const auto info = bmc.getSelInfo();
    if (info) {
        if (info->lastErased != _erased || info->entries == 0) {
            _erased = info->lastErased;
            _restarts = 0;
            _next = 0;
            _seen = -1;
        }
        // At the log's end the last record is read once more, for what stands behind it now.
        const bool isAgain = _next == _logEnd && _seen >= 0;
        const QZ::BmcSelEntries read =
            bmc.getSelEntries(isAgain ? static_cast<std::uint16_t>(_seen)
                                      : (_next == _logEnd ? std::uint16_t(0) : _next));
        for (const QZ::BmcSelEntry& entry : read.entries) {
            if (entry.recordId != _seen) {
                _restarts += _isRestart(entry) ? 1 : 0;
                _seen = entry.recordId;
            }
        }
        if (!read.entries.empty()) {
            _next = read.next;
        }
    }
    return static_cast<std::uint16_t>(
        std::min<unsigned>(_restarts, std::numeric_limits<std::uint16_t>::max()));
}
