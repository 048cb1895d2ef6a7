// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

#include <memory>

namespace Pegasus {

class LanguageTagRep;

// A language as RFC 3066 writes it: "de", "de-AT", "zh-CN-beijing", "i-lux", or "*" for any.
// A value type. Every call on a tag made by the default constructor throws
// UninitializedObjectException.
class PEGASUS_COMMON_LINKAGE LanguageTag {
public:
    LanguageTag() = default;
    // Throws Exception if the text is no tag.
    LanguageTag(const String& languageTagString);

    // Empty for "*" and for tags that begin with "i" or "x".
    String getLanguage() const;
    // The second part where it has two letters.
    String getCountry() const;
    // What is left.
    String getVariant() const;
    // The text as it was given.
    String toString() const;

    // Ignore case.
    Boolean operator==(const LanguageTag& languageTag) const;
    Boolean operator!=(const LanguageTag& languageTag) const;

private:
    const LanguageTagRep& _get() const;

    std::shared_ptr<const LanguageTagRep> _rep;
};

}  // namespace Pegasus
