// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>
#include <vector>

namespace QZ {

// What to do so that a unit is recorded as a file has it.
struct FruChange {
    bool isNew;
    Pegasus::CIMInstance unit;  // whole, as it is to be; with its path where it is not new
    std::string text;           // for people, on one line
};

// The columns of an exported file, which are what people record of a unit; the keys come first.
const std::vector<const char*>& fruColumns();

// The units as a CSV file with a header.
std::string exportFrus(const std::vector<Pegasus::CIMInstance>& recorded);

// What a CSV file changes of the recorded units. Its header names its columns, those of the keys at
// least, in any order and letter case. A unit that is recorded under a row's keys takes over the
// row's cells; what the file does not name stays as it is. Throws Error, with the line, for a file
// of another form: nothing is changed then.
std::vector<FruChange> planImport(const std::vector<Pegasus::CIMInstance>& recorded,
                                  const std::string& text);

}  // namespace QZ
