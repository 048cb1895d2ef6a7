// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// check_messages FILE.res…: fails, with a line for each finding, where a catalogue has a text that
// is no message, lacks a key of the English catalogue beside it, has one that is unknown there, or
// takes other insertions.

#include <cstdio>
#include <filesystem>
#include <optional>
#include <set>

#include "MessageCatalogue.h"
#include "MessageInsertions.h"

using namespace QZ;

namespace {

std::optional<std::string> _insertions(const MessageCatalogue& catalogue, const std::string& key) {
    const std::optional<std::wstring> text = catalogue.find(key);
    return text ? messageInsertions(*text) : std::nullopt;
}

int _check(const std::filesystem::path& file) {
    const std::string folder = file.parent_path().string();
    const MessageCatalogue english(folder, MessageCatalogue::Root);
    const MessageCatalogue catalogue(folder, file.stem().string());
    int findings = 0;
    const auto report = [&](const std::string& key, const char* finding) {
        (void)std::fprintf(stderr, "%s: %s %s\n", file.c_str(), key.c_str(), finding);
        ++findings;
    };
    if (!english.isOpen() || !catalogue.isOpen())
        report("", "cannot be read");
    std::set<std::string> known;
    for (const std::string& key : english.keys()) {
        known.insert(key);
        if (!catalogue.find(key))
            report(key, "is missing");
        else if (!_insertions(catalogue, key))
            report(key, "has an insertion that is neither %ls nor %d");
        else if (_insertions(catalogue, key) != _insertions(english, key))
            report(key, "takes other insertions than the English text");
    }
    for (const std::string& key : catalogue.keys()) {
        if (known.count(key) == 0)
            report(key, "is unknown in English");
    }
    return findings;
}

}  // namespace

int main(int count, char** arguments) {
    int findings = 0;
    for (int index = 1; index < count; ++index)
        findings += _check(arguments[index]);
    return findings == 0 ? 0 : 1;
}
