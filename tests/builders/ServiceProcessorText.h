// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// What the simulated service-processor library reads on a machine; device/simulated/README.md
// states the format.

// One processor that answers everything: every kind of vital product data, all four watchdogs.
std::string wholeServiceProcessor();

// Six processors, the first five of which fail one query each; none tells its family. Their data
// has gaps: kinds without data, a first instance that is missing, records that are not valid.
std::string failingServiceProcessors();

// One whose texts nobody should trust, and whose numbers are the smallest and largest.
std::string hostileServiceProcessor();
