// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// What a machine's management controller replies, as platform/ipmi records it: what it is, its
// sensors and its System Event Log. It has no replaceable units.

// Sensors with names, and a record of each kind: with and without a name of its sensor, beginning
// and ending, of an event without a name, of a maker's own, from before the clock was set.
std::string eventfulController();

// Names that nobody should trust, and a log that ends before its controller says so.
std::string hostileController();
