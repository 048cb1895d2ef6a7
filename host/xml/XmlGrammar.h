// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "XmlTree.h"

namespace QZ {

// Holds a request against DSP0201: the element and all within it have the attributes, elements and
// text that the DTD gives them, in its order and number, and attributes say what it lists for them.
// Throws XmlLayoutError for the first that does not. What else an attribute or a text says is not
// looked at.
void checkXmlGrammar(const XmlElement& element);

}  // namespace QZ
