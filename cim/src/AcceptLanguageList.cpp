// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>

namespace Pegasus {

template <class List>
static auto& _at(List& list, Uint32 index) {
    if (index >= list.size())
        throw IndexOutOfBoundsException();
    return list[index];
}

Uint32 AcceptLanguageList::size() const {
    return static_cast<Uint32>(_languages.size());
}

LanguageTag AcceptLanguageList::getLanguageTag(Uint32 index) const {
    return _at(_languages, index).first;
}

Real32 AcceptLanguageList::getQualityValue(Uint32 index) const {
    return _at(_languages, index).second;
}

void AcceptLanguageList::remove(Uint32 index) {
    _at(_languages, index);
    _languages.erase(_languages.begin() + static_cast<std::ptrdiff_t>(index));
}

void AcceptLanguageList::insert(const LanguageTag& languageTag, Real32 qualityValue) {
    // Written so that what is no number is refused too.
    if (!(qualityValue >= 0 && qualityValue <= 1))
        throw Exception("the quality of an accepted language is not from 0 to 1");
    const auto worse =
        std::find_if(_languages.begin(), _languages.end(),
                     [&](const auto& language) { return language.second < qualityValue; });
    _languages.insert(worse, {languageTag, qualityValue});
}

Uint32 AcceptLanguageList::find(const LanguageTag& languageTag) const {
    const auto found =
        std::find_if(_languages.begin(), _languages.end(),
                     [&](const auto& language) { return language.first == languageTag; });
    return found == _languages.end() ? PEG_NOT_FOUND
                                     : static_cast<Uint32>(found - _languages.begin());
}

void AcceptLanguageList::clear() {
    _languages.clear();
}

Boolean AcceptLanguageList::operator==(const AcceptLanguageList& acceptLanguages) const {
    return _languages == acceptLanguages._languages;
}

Boolean AcceptLanguageList::operator!=(const AcceptLanguageList& acceptLanguages) const {
    return !(*this == acceptLanguages);
}

}  // namespace Pegasus
