// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionTime.h"

#include "CimDateTimes.h"
#include "Clock.h"
#include "SubscriptionProperties.h"

namespace QZ {

using namespace Pegasus;

CIMDateTime currentTime() {
    return make_CIMDateTime(
        DateTime(Clock::current().seconds(), DateTime::CalendarDate | DateTime::TimeOfDay));
}

std::optional<std::uint64_t> secondsRemaining(const CIMConstInstance& subscription) {
    const CIMValue lasting = valueOf(subscription, SUBSCRIPTION_DURATION);
    const CIMValue started = valueOf(subscription, SUBSCRIPTION_START);
    if (lasting.isNull() || started.isNull()) {
        return std::nullopt;
    }
    Uint64 duration = 0;
    lasting.get(duration);
    CIMDateTime start;
    started.get(start);
    const std::int64_t elapsed = Clock::current().seconds() - make_DateTime(start).toSeconds();
    // A clock that was put back gives nothing on top.
    const std::uint64_t passed = elapsed > 0 ? std::uint64_t(elapsed) : 0;
    return passed < duration ? duration - passed : 0;
}

}  // namespace QZ
