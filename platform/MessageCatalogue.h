// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QZ {

// The messages of one language, from an ICU resource bundle FOLDER/LANGUAGE.res. Never throws for
// what it finds on disk. Used by one thread at a time.
class MessageCatalogue {
public:
    // The bundle with the English texts, which every language falls back to.
    static constexpr const char* Root = "root";

    MessageCatalogue(const std::string& folder, const std::string& language);
    ~MessageCatalogue();
    MessageCatalogue(const MessageCatalogue&) = delete;
    MessageCatalogue& operator=(const MessageCatalogue&) = delete;

    bool isOpen() const { return _bundle != nullptr; }

    std::optional<std::wstring> find(const std::string& key) const;

    // Every key, in the bundle's order.
    std::vector<std::string> keys() const;

    // The language whose bundle in the folder serves a language id best: the id's own, that of its
    // language and script, of its language where that is written in the same script; else Root.
    static std::string bestLanguage(const std::string& folder, const std::string& languageId);

private:
    struct Bundle;

    std::unique_ptr<Bundle> _bundle;
};

}  // namespace QZ
