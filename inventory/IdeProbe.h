// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

struct IDEInfo {
    std::string model;
    std::string serialNumber;
};

// The start of a drive's ATA identify data, as bytes: how many were put into `out`, at most
// `max`. 0 where there is no such drive, its data is too short, or max is below 1.
int readIdentify(char drive, char* out, int max);

// Appends a record for each of the drives "a" to "z" that there is. Texts are padded with blanks
// as the drive sends them. Any thread may call it.
void getIDEInfoDirect(std::vector<IDEInfo>& drives);

// Every two of the digits 0-9 and a-f make a byte, the first digit its high half; all else is
// passed over. How many bytes were put into `out`, at most `max`.
int decodeIdentify(const std::string& text, char* out, int max);

}  // namespace QZ
