// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/LanguageTag.h>

#include <vector>

namespace Pegasus {

class LanguageTagRep {
public:
    String text;
    String language;
    String country;
    String variant;
};

[[noreturn]] static void _refuse(const String& text) {
    throw Exception(String("not a language tag: ") + text);
}

static bool _isPart(const String& part, bool mayHaveDigits) {
    for (Uint32 i = 0; i < part.size(); ++i) {
        const Uint16 c = part[i];
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool isDigit = c >= '0' && c <= '9';
        if (!isLetter && !(mayHaveDigits && isDigit))
            return false;
    }
    return part.size() >= 1 && part.size() <= 8;
}

static std::vector<String> _split(const String& text) {
    std::vector<String> parts;
    Uint32 from = 0;
    for (;;) {
        const Uint32 dash = text.find(from, Char16('-'));
        const bool isLast = dash == PEG_NOT_FOUND;
        parts.push_back(isLast ? text.subString(from) : text.subString(from, dash - from));
        if (!_isPart(parts.back(), parts.size() > 1))
            _refuse(text);
        if (isLast)
            return parts;
        from = dash + 1;
    }
}

// RFC 3066, 2.2: a first part of two or three letters is a language of ISO 639, "i" and "x" start
// registered and private tags; a second part of two letters is a country, of one letter nothing.
static void _parse(const String& text, LanguageTagRep& rep) {
    const std::vector<String> parts = _split(text);
    const bool isStandard = parts[0] != "i" && parts[0] != "x";
    if (isStandard && parts[0].size() != 2 && parts[0].size() != 3)
        _refuse(text);
    if (parts.size() > 1 && parts[1].size() == 1)
        _refuse(text);
    if (!isStandard)
        return;
    rep.language = parts[0];
    std::size_t next = 1;
    if (parts.size() > 1 && parts[1].size() == 2)
        rep.country = parts[next++];
    for (; next < parts.size(); ++next) {
        if (rep.variant.size() > 0)
            rep.variant.append('-');
        rep.variant.append(parts[next]);
    }
}

LanguageTag::LanguageTag(const String& languageTagString) {
    auto rep = std::make_shared<LanguageTagRep>();
    rep->text = languageTagString;
    if (languageTagString != "*")
        _parse(languageTagString, *rep);
    _rep = rep;
}

const LanguageTagRep& LanguageTag::_get() const {
    if (!_rep)
        throw UninitializedObjectException();
    return *_rep;
}

String LanguageTag::getLanguage() const {
    return _get().language;
}

String LanguageTag::getCountry() const {
    return _get().country;
}

String LanguageTag::getVariant() const {
    return _get().variant;
}

String LanguageTag::toString() const {
    return _get().text;
}

Boolean LanguageTag::operator==(const LanguageTag& languageTag) const {
    return String::equalNoCase(_get().text, languageTag._get().text);
}

Boolean LanguageTag::operator!=(const LanguageTag& languageTag) const {
    return !(*this == languageTag);
}

}  // namespace Pegasus
