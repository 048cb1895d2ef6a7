// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "tavqz/VPD.h"

// The values of a VPD record's fields as a description writes them.

// A decimal number, and nothing but that; else false, and value as it was.
bool readNumber(const std::string& text, long long& value);

// False, and some value, where the text is none of that type. A list may be empty.
bool readField(const std::string& text, VPD::Int& value);
bool readField(const std::string& text, VPD::Byte& value);
bool readField(const std::string& text, VPD::String& value);
bool readField(const std::string& text, VPD::Calendar& value);
bool readField(const std::string& text, VPD::ManufactureDate& value);
bool readField(const std::string& text, VPD::Bytes& value);
bool readField(const std::string& text, VPD::MacAddresses& value);
bool readField(const std::string& text, VPD::Interfaces& value);

enum class FieldCheck { Good, WrongValue, NoField };

// Of a field by its name, as "FB_VPDID".
FieldCheck checkField(const std::string& field, const std::string& text);

// What the field's values look like, as the end of a sentence; null for a field that there is not.
const char* fieldForm(const std::string& field);
