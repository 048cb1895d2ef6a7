// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "SmBios.h"

namespace QZ {

// Views that say in their type which structure they hold. Each is made from a table of its type;
// that it is one is the caller's to know.

// System Information (DSP0134, 7.2).
class TableType1 : public SmBios::Table {
public:
    explicit TableType1(const SmBios::Table& table) : SmBios::Table(table) {}
};

// Baseboard Information (7.3).
class TableType2 : public SmBios::Table {
public:
    explicit TableType2(const SmBios::Table& table) : SmBios::Table(table) {}
};

// System Enclosure or Chassis (7.4).
class TableType3 : public SmBios::Table {
public:
    explicit TableType3(const SmBios::Table& table) : SmBios::Table(table) {}
};

// Memory Device (7.18).
class TableType17 : public SmBios::Table {
public:
    explicit TableType17(const SmBios::Table& table) : SmBios::Table(table) {}
};

}  // namespace QZ
