// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "tavqz/Export.h"

// A text file of named values in sections, laid out like an exported registry:
//
//   [hkey_local_machine\software\agent]
//   name=string&text&
//   level=dword:0000002a
//
// The file is read once, at construction; case does not matter in it, and texts come back in lower
// case. Keys and value names are looked for as plain substrings: a value's name also finds an
// earlier value of its section whose name contains it. An object is used by one thread at a time;
// nothing throws. Texts that are char* for the sake of their callers are only read.
class TAVQZ_EXPORT cRegistry {
public:
    // The most characters of a text that GetRegInfo copies; the rest is cut off.
    TAVQZ_INTERNAL static constexpr std::size_t MAX_TEXT = 1024;

    // Reads the file, of at most 16 MiB. With a null name, or a file that cannot be read, the
    // object has no content: every operation then answers "no" and none makes a file.
    explicit cRegistry(char* fileName);
    // Writes nothing: see CloseRegData.
    ~cRegistry();
    cRegistry(const cRegistry&) = delete;
    cRegistry& operator=(const cRegistry&) = delete;

    // Whether a section's name begins with the key. Says on standard output what it looks for.
    bool CheckRegTree(char* key);
    // Whether the text stands anywhere in the file. Says so too.
    bool CheckRegTreeLineItem(char* item);

    // Reads a value of exactly that section: 1 with *number, or the characters of a text (without
    // a NUL behind them: zero the buffer first, of MAX_TEXT characters), else 0. *number is 0
    // unless a number was found; null outputs are left out.
    int GetRegInfo(char* key, char* valueName, unsigned long* number, unsigned char* text);

    // Changes the content, not yet the file; 1, or 0 where something is null, the data is neither
    // "string&TEXT&" nor "dword:" with 1 to 8 hexadecimal digits (eight are written), or a name or
    // the data would break the layout. The entry with exactly that name is replaced, its line alone
    // where a text's second "&" is missing; a new one goes to the end of its section, a new section
    // to the end of the file.
    int UpdateRegInfo(char* key, char* valueName, char* data);
    // The same with the whole entry, "NAME=string&TEXT&" or "NAME=dword:DIGITS".
    int WriteRegInfo(char* key, char* entry);

    // Replaces the file with the content where that was changed; what was not changed stays as it
    // was, letter case included. 1 on success, also with nothing to do; 0 where that failed.
    int UpdateRegData();
    // UpdateRegData, then lets the content go, written or not.
    int CloseRegData();

    // As the function of that name in AccessHelpers.h.
    int _httoi(char const* text, int length);

private:
    bool _check(const char* argument, const char* prefix) const;

    struct Content;
    std::string _fileName;
    std::unique_ptr<Content> _content;  // null: none
};
