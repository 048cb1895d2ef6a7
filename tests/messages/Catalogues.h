// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "TemporaryFolder.h"
#include "Text.h"

// Message catalogues of a test's own, compiled as the build compiles ours.
class Catalogues {
public:
    // The texts are as in a source: KEY { "text" }.
    void add(const std::string& language, const std::string& texts) const {
        const std::string source =
            _folder.write(language + ".txt", language + " {\n" + texts + "\n}\n");
        const std::string command =
            std::string(GENRB " -q -e UTF-8 -d ") + _folder.path() + " " + source;
        if (std::system(command.c_str()) != 0)  // NOLINT(cert-env33-c): our own words
            throw std::runtime_error("cannot compile " + source);
    }

    std::wstring library(const std::string& language) const {
        return QZ::make_wstring(_folder.file(language));
    }
    const TemporaryFolder& folder() const { return _folder; }

private:
    TemporaryFolder _folder;
};
