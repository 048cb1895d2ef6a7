// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Placeholders.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace QZ {

namespace {

// Letters and digits alone, in lower case.
std::string essence(const std::string& text) {
    std::string result;
    for (const char character : text) {
        const bool isUpper = character >= 'A' && character <= 'Z';
        const bool isOther =
            (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
        if (isUpper || isOther)
            result += static_cast<char>(isUpper ? character - 'A' + 'a' : character);
    }
    return result;
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// What makers' firmware, drivers and a freshly installed system say for want of anything.
constexpr const char* wholeTexts[] = {
    "asset1234567890",
    "bad",
    "badindex",
    "blank",
    "default",
    "defaultstring",
    "empty",
    "error",
    "fillbyoem",
    "filledbyoem",
    "invalid",
    "localhost",
    "localhostlocaldomain",
    "na",
    "noassetinformation",
    "nodimm",
    "nomodule",
    "nomoduleinstalled",
    "none",
    "notapplicable",
    "notavailable",
    "notdefined",
    "notfilled",
    "notinstalled",
    "notpopulated",
    "notpresent",
    "notprovided",
    "notset",
    "notsettable",
    "notspecified",
    "notused",
    "null",
    "oem",
    "oemdefaultstring",
    "outofspec",
    "reserved",
    "standard",
    "systemname",
    "tbd",
    "tobedetermined",
    "tobefilled",
    "tobefilledbyoem",
    "tobefilledbyoemmore",
    "undefined",
    "uninitialized",
    "unknown",
    "unspecified",
    "unused",
    "virtualmachine",
};

// The name of the field in the place of what belongs there: "Base Board Serial Number",
// "No Asset Tag", and by the number of its slot "A1_SerNum0".
constexpr const char* ends[] = {"assettag", "serialnumber", "serialnum", "sernum"};
constexpr const char* numberedEnds[] = {"assettagnum", "sernum"};

template <std::size_t Count>
bool endsWithAny(const std::string& text, const char* const (&all)[Count]) {
    return std::any_of(std::begin(all), std::end(all),
                       [&text](const char* end) { return endsWith(text, end); });
}

}  // namespace

bool isPlaceholder(const std::string& text) {
    static const std::string counted = "01234567890123456789abcdefghijklmnopqrstuvwxyz";
    const std::string name = essence(text);
    if (name.find_first_not_of(name.substr(0, 1)) == std::string::npos ||
        counted.find(name) != std::string::npos)
        return true;
    const bool isWhole = std::any_of(std::begin(wholeTexts), std::end(wholeTexts),
                                     [&name](const char* whole) { return name == whole; });
    return isWhole || endsWithAny(name, ends) ||
           endsWithAny(name.substr(0, name.find_last_not_of("0123456789") + 1), numberedEnds);
}

}  // namespace QZ
