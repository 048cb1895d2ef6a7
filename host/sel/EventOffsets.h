// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace QZ {

// The place in the list of SystemEventRecord's names that has the name of an event, whose offset
// is the one of IPMI 2.0, tables 42-2 and 42-3: most lists are in the order of these tables.
// Nothing where the list is in another order and lacks the event. Pure.
std::optional<std::uint32_t> eventPlace(unsigned readingType, unsigned sensorType, unsigned offset);

}  // namespace QZ
