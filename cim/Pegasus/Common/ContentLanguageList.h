// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/LanguageTag.h>
#include <Pegasus/Common/Linkage.h>

#include <vector>

namespace Pegasus {

// The languages in which an answer is written (RFC 2616, 14.12). A value type.
class PEGASUS_COMMON_LINKAGE ContentLanguageList {
public:
    ContentLanguageList() = default;

    Uint32 size() const;
    // These throw IndexOutOfBoundsException.
    LanguageTag getLanguageTag(Uint32 index) const;
    void remove(Uint32 index);

    // Throws Exception for "*": an answer is in some language, not in any.
    void append(const LanguageTag& languageTag);
    // The position, or PEG_NOT_FOUND.
    Uint32 find(const LanguageTag& languageTag) const;
    void clear();

    // Same languages in the same order.
    Boolean operator==(const ContentLanguageList& contentLanguages) const;
    Boolean operator!=(const ContentLanguageList& contentLanguages) const;

private:
    std::vector<LanguageTag> _languages;
};

}  // namespace Pegasus
