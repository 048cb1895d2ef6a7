// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMObjectPath.h>

namespace Pegasus {

// What copies of one path share; the keys are sorted.
class CIMObjectPathRep {
public:
    String host;
    CIMNamespaceName nameSpace;
    CIMName className;
    Array<CIMKeyBinding> keys;
};

// Reads the text form. Throws MalformedObjectNameException, with what is wrong in its message.
CIMObjectPathRep parseObjectPath(const String& text);

String formatObjectPath(const CIMObjectPathRep& path);

// By name, ignoring case; keys of the same name keep their order.
void sortKeys(Array<CIMKeyBinding>& keys);

// A MalformedObjectNameException whose message names the text and the reason.
[[noreturn]] void throwMalformed(const String& text, const String& reason);

}  // namespace Pegasus
