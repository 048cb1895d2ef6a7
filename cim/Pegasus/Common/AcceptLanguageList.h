// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/LanguageTag.h>
#include <Pegasus/Common/Linkage.h>

#include <utility>
#include <vector>

namespace Pegasus {

// The languages in which a client wants its answer, best first (RFC 2616, 14.4). A value type.
class PEGASUS_COMMON_LINKAGE AcceptLanguageList {
public:
    AcceptLanguageList() = default;

    Uint32 size() const;
    // These throw IndexOutOfBoundsException.
    LanguageTag getLanguageTag(Uint32 index) const;
    Real32 getQualityValue(Uint32 index) const;
    void remove(Uint32 index);

    // Puts the language behind all that are at least as good. Throws Exception if the quality is
    // not from 0 to 1.
    void insert(const LanguageTag& languageTag, Real32 qualityValue);
    // The position, or PEG_NOT_FOUND.
    Uint32 find(const LanguageTag& languageTag) const;
    void clear();

    // Same languages with the same qualities in the same order.
    Boolean operator==(const AcceptLanguageList& acceptLanguages) const;
    Boolean operator!=(const AcceptLanguageList& acceptLanguages) const;

private:
    std::vector<std::pair<LanguageTag, Real32>> _languages;
};

}  // namespace Pegasus
