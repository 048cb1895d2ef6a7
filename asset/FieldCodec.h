// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "DateTime.h"
#include "PropertyFile.h"

namespace QZ {

// How each type of value stands in "asset.dat". Every function makes one call on the file, keeps
// no state and takes no lock: `_fileMutex` is the caller's. What the file throws passes through.
//
//   text            as it is
//   8-bit number    decimal; reading keeps the low 8 bits
//   32-bit number   decimal, signed: 4294967295 stands as -1
//   date            DateTime's own text, empty where no date is set
//
// A missing key reads as empty text, 0, or the unset date; a number ends at the first character
// that is no digit.

std::string ReadStringFromFile(const PropertyFile& file, const std::string& key);
unsigned char ReadUint8FromFile(const PropertyFile& file, const std::string& key);
unsigned int ReadUint32FromFile(const PropertyFile& file, const std::string& key);
DateTime ReadDateFromFile(const PropertyFile& file, const std::string& key);

void WriteStringToFile(PropertyFile& file, const std::string& key, const std::string& value);
void WriteUint8ToFile(PropertyFile& file, const std::string& key, unsigned char value);
void WriteUint32ToFile(PropertyFile& file, const std::string& key, unsigned int value);
void WriteDateToFile(PropertyFile& file, const std::string& key, const DateTime& value);

}  // namespace QZ
