// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AssetIDIndicationThread.h"

#include "AssetIDProvider.h"
#include "LogItem.h"

namespace QZ {

namespace {

constexpr unsigned _firstWait = 5000;  // milliseconds
constexpr unsigned _nextWait = 3600000;

void _check(AssetIDProvider& provider) {
    try {
        provider.checkCondition();
    } catch (...) {
        // Whatever it was, the next check may do better.
        logItem("AssetIDIndicationThread", "check failed");
    }
}

}  // namespace

int AssetIDIndicationThread::run(void* provider) {
    auto& checked = *static_cast<AssetIDProvider*>(provider);
    _stop.wait(_firstWait);
    _check(checked);
    while (!_stop.isSet()) {
        if (!_stop.wait(_nextWait))
            _check(checked);
    }
    return 0;
}

}  // namespace QZ
