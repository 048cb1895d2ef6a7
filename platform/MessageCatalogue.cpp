// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MessageCatalogue.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unicode/uloc.h>
#include <unicode/ures.h>
#include <unicode/ustring.h>

#include <array>

#include "Text.h"

namespace QZ {

namespace {

struct CloseBundle {
    void operator()(UResourceBundle* bundle) const { ures_close(bundle); }
};
using BundlePointer = std::unique_ptr<UResourceBundle, CloseBundle>;

using IdBuffer = std::array<char, ULOC_FULLNAME_CAPACITY>;

// ICU keeps what it has opened until the process ends, so it must not be unloaded with a module.
void keepIcuLoaded() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ures_openDirect), &info) == 0)
        return;
    if (void* const library = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE))
        dlclose(library);
}

bool isFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// What ICU opened or failed to open it remembers for good: it is asked only for files that exist.
bool hasBundle(const std::string& folder, const std::string& language) {
    return isFile(folder + "/" + language + ".res");
}

std::wstring wideText(const UChar* text, std::int32_t length) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t size = 0;
    u_strToUTF8(nullptr, 0, &size, text, length, &status);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    status = U_ZERO_ERROR;
    u_strToUTF8(narrow.data(), size, nullptr, text, length, &status);
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
    if (!hasBundle(folder, language))
        return;
    static const bool isKept = (keepIcuLoaded(), true);
    (void)isKept;
    UErrorCode status = U_ZERO_ERROR;
    BundlePointer bundle(ures_openDirect(folder.c_str(), language.c_str(), &status));
    if (U_SUCCESS(status) && bundle != nullptr)
        _bundle = std::make_unique<Bundle>(Bundle{std::move(bundle)});
}

MessageCatalogue::~MessageCatalogue() = default;

std::optional<std::wstring> MessageCatalogue::find(const std::string& key) const {
    if (_bundle == nullptr)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const UChar* const text =
        ures_getStringByKey(_bundle->root.get(), key.c_str(), &length, &status);
    if (U_FAILURE(status) || text == nullptr)
        return std::nullopt;
    return wideText(text, length);
}

std::vector<std::string> MessageCatalogue::keys() const {
    std::vector<std::string> keys;
    if (_bundle == nullptr)
        return keys;
    ures_resetIterator(_bundle->root.get());
    while (ures_hasNext(_bundle->root.get()) != 0) {
        UErrorCode status = U_ZERO_ERROR;
        const BundlePointer item(ures_getNextResource(_bundle->root.get(), nullptr, &status));
        if (U_FAILURE(status))
            break;
        keys.emplace_back(ures_getKey(item.get()));
    }
    return keys;
}

std::string MessageCatalogue::bestLanguage(const std::string& folder,
                                           const std::string& languageId) {
    UErrorCode status = U_ZERO_ERROR;
    IdBuffer full{};
    uloc_addLikelySubtags(languageId.c_str(), full.data(), std::int32_t{ULOC_FULLNAME_CAPACITY},
                          &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING)
        return Root;
    const std::string language = idPart(uloc_getLanguage, full.data());
    const std::string script = idPart(uloc_getScript, full.data());
    const std::string region = idPart(uloc_getCountry, full.data());
    if (language.empty())
        return Root;
    const std::string written = language + "_" + script;
    IdBuffer usual{};
    uloc_addLikelySubtags(language.c_str(), usual.data(), std::int32_t{ULOC_FULLNAME_CAPACITY},
                          &status);
    const bool isUsual = idPart(uloc_getScript, usual.data()) == script;
    const std::string inRegion = "_" + region;
    for (const std::string& name :
         {language + inRegion, written + inRegion, written, isUsual ? language : ""}) {
        if (name.size() > 1 && name.back() != '_' && hasBundle(folder, name))
            return name;
    }
    return Root;
}

}  // namespace QZ
