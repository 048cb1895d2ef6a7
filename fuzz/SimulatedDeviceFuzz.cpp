// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "Description.h"

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

}  // namespace

// The text that describes simulated service processors. Whatever it is, a mistake is a line that a
// terminal can show, and what is left is in its bounds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Description::Parsed parsed = Description::parse(text);
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    require(parsed.mistakes.size() <= lines);
    for (const std::string& mistake : parsed.mistakes) {
        require(mistake.compare(0, 5, "line ") == 0);
        for (const char character : mistake)
            require(static_cast<unsigned char>(character) >= ' ');
    }
    for (int spIndex = -1; spIndex < 3; ++spIndex) {
        require(parsed.description.text(spIndex, "machine.uuid").size() <= 33);
        const long long restarts = parsed.description.number(spIndex, "state.restarts", 0);
        require(restarts >= 0 && restarts <= 65535);
        parsed.description.below(spIndex, "vpd.18.1.");
    }
    return 0;
}
