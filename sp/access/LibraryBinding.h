// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tavqz/InterfaceTable.h"

namespace QZ {

// A library that was, or was not, opened, on behalf of an operation under whose name the binding
// is reported. Owns nothing.
struct _LibraryBinding {
    const char* operation;
    const char* name;  // null reads "(null)"
    void* handle;      // null when it could not be opened

    // Reports whether the library was opened; if it was, binds the table.
    bool bind(interfaceStruct* table, int count) const;

    // Binds the table's rows in their order, those without a name left out. False at the first
    // one that does not resolve: that one becomes null, the later ones stay as they are.
    bool bindTable(interfaceStruct* table, int count) const;

    void reportOpened() const;
};

// Writes a message with the name in the place of its %s to standard output, at once: the
// messages have no newline behind them, and stand between those of other programs.
void _printMessage(const char* format, const char* name);

}  // namespace QZ
