// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

// Simulated service processors as a text describes them; README.md states the format. A value.
class Description {
public:
    struct Parsed;

    // Reads any text.
    static Parsed parse(const std::string& text);

    // What is said of the processor of that index, from 0, or else of all; of all for a negative
    // index. Empty where nothing is.
    std::optional<std::string> find(int spIndex, const std::string& key) const;
    std::string text(int spIndex, const std::string& key) const;
    long long number(int spIndex, const std::string& key, long long missing) const;

    // Every key of that processor's that starts so, with that taken off.
    std::map<std::string, std::string> below(int spIndex, const std::string& prefix) const;

private:
    std::map<std::string, std::string> _values;
};

struct Description::Parsed {
    Description description;
    // A sentence for each line that is wrong and was left out, starting with its number.
    std::vector<std::string> mistakes;
};

// That of this machine (MachinePaths), read anew. None where there is no file, or one in which
// anything is wrong: standard error is told what, once for each new content. Any thread may ask.
std::optional<Description> loadDescription();
