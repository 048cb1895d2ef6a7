// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Whether a text stands where a maker has put no number or name, as "To Be Filled By O.E.M.",
// "N/A", "00000000" and "0123456789" do, in whatever case and with whatever around its letters and
// digits. Such a text stands on many machines, and in other places than numbers. Pure.
bool isPlaceholder(const std::string& text);

}  // namespace QZ
