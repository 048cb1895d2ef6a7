// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "SmBios.h"

namespace QZ {

// Decodes an SMBIOS entry point ("_SM_", "_SM3_", or "_DMI_" alone) and the table of structures
// that goes with it. Pure, total over any bytes, callable from any thread.
//
// The table's own bytes are what is believed: a wrong checksum, length or count in the entry
// point, or no entry point at all, makes the result Damaged and costs no structure. Structures
// are taken up to the end-of-table structure, the first whose length is below 4, or the end of
// the bytes. Of a structure that the bytes end in, the formatted area is kept only if it is
// whole, and so is each string: half a serial number is another serial number.
//
// Failed when there is no structure at all.
SmBios::Contents decodeSmBios(const std::string& entryPoint, std::string table);

}  // namespace QZ
