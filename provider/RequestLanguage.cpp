// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RequestLanguage.h"

#include "CimText.h"

namespace QZ {

using namespace Pegasus;

std::string requestLanguage(const OperationContext& context) {
    if (!context.contains(AcceptLanguageListContainer::NAME))
        return {};
    const AcceptLanguageListContainer container(context.get(AcceptLanguageListContainer::NAME));
    const AcceptLanguageList languages = container.getLanguages();
    if (languages.size() == 0 || languages.getQualityValue(0) == 0)
        return {};
    return make_string(languages.getLanguageTag(0).toString());
}

}  // namespace QZ
