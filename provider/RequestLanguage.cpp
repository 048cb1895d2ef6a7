// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RequestLanguage.h"

#include "CimText.h"
#include "Product.h"

namespace QZ {

using namespace Pegasus;

std::string requestLanguage(const OperationContext& context) {
    if (!context.contains(AcceptLanguageListContainer::NAME))
        return {};
    const AcceptLanguageListContainer container(context.get(AcceptLanguageListContainer::NAME));
    const AcceptLanguageList languages = container.getLanguages();
    std::string first;
    for (Uint32 i = 0; i < languages.size() && languages.getQualityValue(i) > 0; ++i) {
        std::string tag = make_string(languages.getLanguageTag(i).toString());
        if (tag == "*")
            return {};
        if (Product::hasResourceLibrary("", tag))
            return tag;
        if (first.empty())
            first = tag;
    }
    return first;
}

}  // namespace QZ
