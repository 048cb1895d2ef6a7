// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

namespace QZ {

// The last state of each source of events, by the source's key.
using JournalStates = std::map<std::string, int>;

// Reads lines of "KEY STATE" from a file of any length, with any blanks before, between and after;
// the first line of a key counts. Lines that are none, or longer than 255 characters, are left out;
// of a file that cannot be read, all. Never throws for what it finds on disk.
JournalStates readJournal(const std::string& path);

// Writes one such line for each source, in the order of the keys. A file that can be written to but
// not replaced is written in place, and may be torn by a crash. Throws Error.
void writeJournal(const std::string& path, const JournalStates& states);

}  // namespace QZ
