// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Array.h>

namespace Pegasus {

template class Array<Boolean>;
template class Array<Uint8>;
template class Array<Sint8>;
template class Array<Uint16>;
template class Array<Sint16>;
template class Array<Uint32>;
template class Array<Sint32>;
template class Array<Uint64>;
template class Array<Sint64>;
template class Array<Real32>;
template class Array<Real64>;
template class Array<Char16>;
template class Array<String>;

}  // namespace Pegasus
