// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <cstdint>
#include <optional>

namespace QZ {

// For how long there is a subscription (DSP1054): SubscriptionDuration, in seconds from its
// SubscriptionStartTime, by the machine's time of day. Durations are kept, what remains is not.

constexpr const char* SUBSCRIPTION_DURATION = "SubscriptionDuration";
constexpr const char* SUBSCRIPTION_START = "SubscriptionStartTime";
constexpr const char* SUBSCRIPTION_REMAINING = "SubscriptionTimeRemaining";

// Now, to the second.
Pegasus::CIMDateTime currentTime();

// Of a subscription: 0 where its time is over, none where it has no end.
std::optional<std::uint64_t> secondsRemaining(const Pegasus::CIMConstInstance& subscription);

}  // namespace QZ
