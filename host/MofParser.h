// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "MofSyntax.h"

namespace QZ {

class MofCursor;

// Reads the part of MOF (DSP0004, annex A) that models are written in: qualifier declarations,
// classes with properties and references, instances, and pragmas that change nothing. Methods,
// aliases and included files are refused rather than skipped.
//
// fileName is for messages. Throws MofError at the first thing that is not understood.
MofDocument parseMof(std::string_view text, const std::string& fileName);

// One declaration of those, added to the document; a pragma adds nothing. Not at the end of the
// text.
void takeMofDeclaration(MofCursor& cursor, MofDocument& document);

// The text of a file of at most 16 MiB; Error where it cannot be read.
std::string readMofFile(const std::string& path);

// What such a file says.
MofDocument parseMofFile(const std::string& path);

}  // namespace QZ
