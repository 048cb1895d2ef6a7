// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <iostream>

#include "Description.h"
#include "Error.h"
#include "FileContent.h"
#include "MachinePaths.h"
#include "Mutex.h"

namespace {

constexpr std::size_t _largestFile = std::size_t(1) << 20;
constexpr std::size_t _mostMistakes = 10;

std::string _sentences(const std::string& path, const std::vector<std::string>& mistakes) {
    std::string text;
    for (std::size_t i = 0; i < std::min(mistakes.size(), _mostMistakes); ++i) {
        text.append("Cannot use ").append(path).append(": ").append(mistakes[i]).append("\n");
    }
    if (mistakes.size() > _mostMistakes) {
        text += "and " + std::to_string(mistakes.size() - _mostMistakes).append(" more\n");
    }
    return text;
}

// A processor is asked again and again, and a person told once.
void _tellOnce(const std::string& text) {
    static QZ::Mutex mutex;
    static std::string told;
    const QZ::MutexLock lock(mutex);
    if (text != told) {
        told = text;
        std::cerr << text << std::flush;
    }
}

}  // namespace

std::optional<Description> loadDescription() {
    const std::string path = QZ::MachinePaths::simulatedServiceProcessors();
    const QZ::FileContent content = QZ::readWholeFile(path, _largestFile);
    Description::Parsed parsed;
    switch (content.state) {
        case QZ::FileContent::Read:
            parsed = Description::parse(content.text);
            break;
        case QZ::FileContent::Missing:
            return std::nullopt;
        case QZ::FileContent::Unreadable:
            parsed.mistakes = {QZ::systemErrorText(content.error)};
            break;
        default:
            parsed.mistakes = {"it is no file of at most 1 MiB"};
    }
    _tellOnce(_sentences(path, parsed.mistakes));
    return parsed.mistakes.empty() ? std::optional(parsed.description) : std::nullopt;
}
