// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>

// A simulated service processor as its text file describes it: lines "key = value", and comments
// that start with "#". A key of processor 1 alone, counted from 0, starts with "sp1.".
class Description {
public:
    static Description parse(const std::string& text);

    // Of "../lib/service-processor.txt", read anew; empty where there is no such file.
    static Description load();

    // What the processor says under that key; any processor for a negative index.
    std::optional<std::string> find(int spIndex, const std::string& key) const;
    std::string text(int spIndex, const std::string& key) const;
    long long number(int spIndex, const std::string& key, long long missing) const;

    // Every key of the processor that starts so, with that taken off.
    std::map<std::string, std::string> below(int spIndex, const std::string& prefix) const;

private:
    std::map<std::string, std::string> _values;
};
