// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/OperationContext.h>

#include <string>

namespace QZ {

// The language that the client wants most among those that there is a message catalogue for, as
// LanguageScope takes it; where there is none for any, the one that it wants most. Empty where it
// does not say, or takes any language before one of ours.
std::string requestLanguage(const Pegasus::OperationContext& context);

}  // namespace QZ
