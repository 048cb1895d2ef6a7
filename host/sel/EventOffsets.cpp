// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "EventOffsets.h"

#include <cstddef>

namespace QZ {

namespace {

constexpr unsigned _sensorSpecific = 0x6F;
constexpr signed char _none = -1;

// Of each offset of the tables, where its name stands in the list.
struct Order {
    unsigned code;
    std::size_t count;
    signed char places[16];
};

// What ends comes before what begins in the tables; the lists have it behind.
constexpr Order _genericOrders[] = {
    {0x03, 2, {1, 0}},  // state
    {0x04, 2, {1, 0}},  // predictive failure
    {0x08, 2, {1, 0}},  // device presence
    {0x09, 2, {1, 0}},  // device state
};

constexpr Order _sensorOrders[] = {
    // Power unit: the interlock comes last.
    {0x09, 8, {0, 1, 2, 7, 3, 4, 5, 6}},
    // ACPI power state: 0Dh is reserved.
    {0x22, 15, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, _none, 13}},
    // Watchdog 2: 04h to 07h are reserved.
    {0x23, 9, {0, 1, 2, 3, _none, _none, _none, _none, 4}},
    // Entity presence: that there is one has no name.
    {0x25, 3, {_none, 0, 1}},
};

template <std::size_t Count>
const Order* _find(const Order (&orders)[Count], unsigned code) {
    for (const Order& order : orders) {
        if (order.code == code) {
            return &order;
        }
    }
    return nullptr;
}

}  // namespace

std::optional<std::uint32_t> eventPlace(unsigned readingType, unsigned sensorType,
                                        unsigned offset) {
    const Order* const order = readingType == _sensorSpecific ? _find(_sensorOrders, sensorType)
                                                              : _find(_genericOrders, readingType);
    if (!order) {
        return offset;
    }
    if (offset >= order->count || order->places[offset] == _none) {
        return std::nullopt;
    }
    return std::uint32_t(order->places[offset]);
}

}  // namespace QZ
