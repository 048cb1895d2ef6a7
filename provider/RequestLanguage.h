// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/OperationContext.h>

#include <string>

namespace QZ {

// The language in which the client wants its answer most, as LanguageScope takes it. Empty where
// it does not say, or takes any.
std::string requestLanguage(const Pegasus::OperationContext& context);

}  // namespace QZ
