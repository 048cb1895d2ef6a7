// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/String.h>

namespace Pegasus {

// Whether the text names a host, with an optional ":port": an IPv4 address, an IPv6 address in
// brackets (a link-local one with a "%" and an interface of this machine), or a host name after
// RFC 1123, in which underscores are allowed and the last label is not all digits.
bool isHostName(const String& text);

}  // namespace Pegasus
