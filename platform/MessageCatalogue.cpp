// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MessageCatalogue.h"

#include <sys/stat.h>

#include <array>

#include "Icu.h"
#include "Text.h"

namespace QZ {

namespace {

struct CloseBundle {
    void operator()(UResourceBundle* bundle) const { Icu::get()->ures_close(bundle); }
};
using BundlePointer = std::unique_ptr<UResourceBundle, CloseBundle>;

using IdBuffer = std::array<char, ULOC_FULLNAME_CAPACITY>;

bool isFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// What ICU opened or failed to open it remembers for good: it is asked only for files that exist.
bool hasBundle(const std::string& folder, const std::string& language) {
    return isFile(folder + "/" + language + ".res");
}

std::wstring wideText(const Icu& icu, const UChar* text, std::int32_t length) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t size = 0;
    icu.u_strToUTF8(nullptr, 0, &size, text, length, &status);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    status = U_ZERO_ERROR;
    icu.u_strToUTF8(narrow.data(), size, nullptr, text, length, &status);
    return U_SUCCESS(status) || status == U_STRING_NOT_TERMINATED_WARNING ? make_wstring(narrow)
                                                                          : std::wstring();
}

using IdFunction = std::int32_t (*)(const char*, char*, std::int32_t, UErrorCode*);

std::string idPart(IdFunction function, const std::string& id) {
    IdBuffer part{};
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        function(id.c_str(), part.data(), std::int32_t{ULOC_FULLNAME_CAPACITY}, &status);
    return U_SUCCESS(status) && length < ULOC_FULLNAME_CAPACITY
               ? std::string(part.data(), static_cast<std::size_t>(length))
               : std::string();
}

}  // namespace

struct MessageCatalogue::Bundle {
    BundlePointer root;
};

MessageCatalogue::MessageCatalogue(const std::string& folder, const std::string& language) {
    const Icu* const icu = hasBundle(folder, language) ? Icu::get() : nullptr;
    if (icu == nullptr)
        return;
    UErrorCode status = U_ZERO_ERROR;
    BundlePointer bundle(icu->ures_openDirect(folder.c_str(), language.c_str(), &status));
    if (U_SUCCESS(status) && bundle != nullptr)
        _bundle = std::make_unique<Bundle>(Bundle{std::move(bundle)});
}

MessageCatalogue::~MessageCatalogue() = default;

std::optional<std::wstring> MessageCatalogue::find(const std::string& key) const {
    if (_bundle == nullptr)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const Icu& icu = *Icu::get();
    const UChar* const text =
        icu.ures_getStringByKey(_bundle->root.get(), key.c_str(), &length, &status);
    if (U_FAILURE(status) || text == nullptr)
        return std::nullopt;
    return wideText(icu, text, length);
}

std::vector<std::string> MessageCatalogue::keys() const {
    std::vector<std::string> keys;
    if (_bundle == nullptr)
        return keys;
    const Icu& icu = *Icu::get();
    icu.ures_resetIterator(_bundle->root.get());
    while (icu.ures_hasNext(_bundle->root.get()) != 0) {
        UErrorCode status = U_ZERO_ERROR;
        const BundlePointer item(icu.ures_getNextResource(_bundle->root.get(), nullptr, &status));
        if (U_FAILURE(status))
            break;
        keys.emplace_back(icu.ures_getKey(item.get()));
    }
    return keys;
}

std::string MessageCatalogue::bestLanguage(const std::string& folder,
                                           const std::string& languageId) {
    const Icu* const icu = Icu::get();
    if (icu == nullptr)
        return Root;
    UErrorCode status = U_ZERO_ERROR;
    IdBuffer full{};
    icu->uloc_addLikelySubtags(languageId.c_str(), full.data(),
                               std::int32_t{ULOC_FULLNAME_CAPACITY}, &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING)
        return Root;
    const std::string language = idPart(icu->uloc_getLanguage, full.data());
    const std::string script = idPart(icu->uloc_getScript, full.data());
    const std::string region = idPart(icu->uloc_getCountry, full.data());
    if (language.empty())
        return Root;
    const std::string written = language + "_" + script;
    IdBuffer usual{};
    icu->uloc_addLikelySubtags(language.c_str(), usual.data(), std::int32_t{ULOC_FULLNAME_CAPACITY},
                               &status);
    const bool isUsual = idPart(icu->uloc_getScript, usual.data()) == script;
    const std::string inRegion = "_" + region;
    for (const std::string& name :
         {language + inRegion, written + inRegion, written, isUsual ? language : ""}) {
        if (name.size() > 1 && name.back() != '_' && hasBundle(folder, name))
            return name;
    }
    return Root;
}

}  // namespace QZ
