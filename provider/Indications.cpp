// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// Indications: when the checking thread runs, and what it does.

#include "AssetIDIndicationThread.h"
#include "AssetIDProvider.h"
#include "Boundary.h"
#include "ExpiryCheck.h"

namespace QZ {

using namespace Pegasus;

namespace {

// What was reported outlives the providers. Two of them may be checking for a moment.
Mutex _expiryMutex;
ExpiryCheck _expiry;

}  // namespace

std::atomic<int> AssetIDProvider::_refCnt{0};

void AssetIDProvider::enableIndications(IndicationResponseHandler& handler) {
    atBoundary([&] {
        const MutexLock lock(_threadMutex);
        if (++_refCnt != 1)
            return;
        // One is left where another provider's disabling brought the count to 0.
        _stopThread();
        _indicationHandler = &handler;
        try {
            _indicationThread = std::make_unique<AssetIDIndicationThread>();
            _indicationThread->start(this);
            handler.processing();
        } catch (...) {
            // Nobody disables what could not be enabled.
            _stopThread();
            _indicationHandler = nullptr;
            --_refCnt;
            throw;
        }
    });
}

void AssetIDProvider::disableIndications() {
    atBoundary([&] {
        const MutexLock lock(_threadMutex);
        if (--_refCnt != 0 || _indicationThread == nullptr)
            return;
        _stopThread();
        _indicationHandler->complete();
        _indicationHandler = nullptr;
    });
}

void AssetIDProvider::checkCondition() {
    const MutexLock lock(_expiryMutex);
    _expiry.check(_serverHandle(),
                  [this](const CIMInstance& alert) { _indicationHandler->deliver(alert.clone()); });
}

void AssetIDProvider::forgetReported() {
    const MutexLock lock(_expiryMutex);
    _expiry = ExpiryCheck();
}

void AssetIDProvider::_stopThread() {
    if (_indicationThread == nullptr)
        return;
    _indicationThread->stop();
    _indicationThread->join();
    _indicationThread.reset();
}

}  // namespace QZ
