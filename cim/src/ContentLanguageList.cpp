// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>

namespace Pegasus {

Uint32 ContentLanguageList::size() const {
    return static_cast<Uint32>(_languages.size());
}

LanguageTag ContentLanguageList::getLanguageTag(Uint32 index) const {
    if (index >= size())
        throw IndexOutOfBoundsException();
    return _languages[index];
}

void ContentLanguageList::remove(Uint32 index) {
    if (index >= size())
        throw IndexOutOfBoundsException();
    _languages.erase(_languages.begin() + static_cast<std::ptrdiff_t>(index));
}

void ContentLanguageList::append(const LanguageTag& languageTag) {
    if (languageTag.toString() == "*")
        throw Exception("an answer is not written in the language \"*\"");
    _languages.push_back(languageTag);
}

Uint32 ContentLanguageList::find(const LanguageTag& languageTag) const {
    const auto found = std::find(_languages.begin(), _languages.end(), languageTag);
    return found == _languages.end() ? PEG_NOT_FOUND
                                     : static_cast<Uint32>(found - _languages.begin());
}

void ContentLanguageList::clear() {
    _languages.clear();
}

Boolean ContentLanguageList::operator==(const ContentLanguageList& contentLanguages) const {
    return _languages == contentLanguages._languages;
}

Boolean ContentLanguageList::operator!=(const ContentLanguageList& contentLanguages) const {
    return !(*this == contentLanguages);
}

}  // namespace Pegasus
