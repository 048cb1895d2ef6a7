// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// What a PCI board tells of itself in its vital product data (PCI Local Bus 3.0, appendix I),
// without the blanks and zeros around it; empty where it does not tell.
struct PciVpd {
    std::string product;       // the identifier string
    std::string partNumber;    // PN
    std::string serialNumber;  // SN
    std::string manufacturer;  // MN
};

// Any bytes: what stands before the first one that is wrong is taken. Boards leave the checksum out
// or wrong, so nobody asks for it.
PciVpd decodePciVpd(const std::string& bytes);

}  // namespace QZ
