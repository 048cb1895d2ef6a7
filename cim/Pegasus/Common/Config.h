// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

// What CIM types are called in C++, and the macros that portable provider sources are written with.
// A module built from such a source compiles against these headers and against an installed SDK.

#define PEGASUS_EXPORT __attribute__((visibility("default")))
#define PEGASUS_IMPORT __attribute__((visibility("default")))
#define PEGASUS_HIDDEN_LINKAGE __attribute__((visibility("hidden")))

#define PEGASUS_HAVE_NAMESPACES
#define PEGASUS_NAMESPACE_BEGIN namespace Pegasus {
#define PEGASUS_NAMESPACE_END }
#define PEGASUS_NAMESPACE(X) Pegasus::X
#define PEGASUS_STD(X) std::X
#define PEGASUS_USING_STD using namespace std
#define PEGASUS_USING_PEGASUS using namespace Pegasus

#define PEGASUS_SINT64_LITERAL(X) (Sint64(X##LL))
#define PEGASUS_UINT64_LITERAL(X) (Uint64(X##ULL))
#define PEGASUS_FORMAT(TEXT, ARGUMENTS) __attribute__((format(printf, TEXT, ARGUMENTS)))

// What a search answers when there is nothing to find.
#define PEG_NOT_FOUND Uint32(-1)

namespace Pegasus {

using Boolean = bool;
using Uint8 = unsigned char;
using Sint8 = signed char;
using Uint16 = unsigned short;
using Sint16 = signed short;
using Uint32 = unsigned int;
using Sint32 = signed int;
// long long on every architecture: "long" would be 32 bits on i386.
using Uint64 = unsigned long long;
using Sint64 = long long;
using Real32 = float;
using Real64 = double;

}  // namespace Pegasus
