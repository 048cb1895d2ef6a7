// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IdeProbe.h"

#include <cstring>

#include "FileContent.h"
#include "Folder.h"
#include "MachinePaths.h"
#include "Mutex.h"

namespace QZ {
namespace {

// What is looked at of the file, and how much of it there must be for both texts.
constexpr std::size_t _lookedAt = 512;
constexpr std::size_t _needed = 351;

// Where ATA puts the texts: words 10 to 19 and 27 to 46.
constexpr std::size_t _serialNumberOffset = 20;
constexpr std::size_t _serialNumberLength = 20;
constexpr std::size_t _modelOffset = 54;
constexpr std::size_t _modelLength = 40;

// One for the whole module. Where a drive sends fewer bytes than its texts need, the others are
// still those of the drive before it.
Mutex _bufferMutex;
char _buffer[512];

// The value of a digit as the kernel prints it; -1 of any other character.
int _digit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    return character >= 'a' && character <= 'f' ? character - 'a' + 10 : -1;
}

std::string _text(const char* field, std::size_t length) {
    return std::string(field, strnlen(field, length));
}

}  // namespace

int decodeIdentify(const std::string& text, char* out, int max) {
    int count = 0;
    int high = -1;
    for (const char character : text) {
        const int digit = _digit(character);
        if (digit < 0) {
            continue;
        }
        if (high < 0) {
            high = digit;
            continue;
        }
        if (count >= max) {
            break;
        }
        // A word's high byte comes first, which is the order of ATA's texts: nothing to swap.
        out[count++] = static_cast<char>(high << 4 | digit);
        high = -1;
    }
    return count;
}

int readIdentify(char drive, char* out, int max) {
    const FileContent file = readFileStart(MachinePaths::ideIdentify(drive), _lookedAt);
    if (file.text.size() < _needed || max < 1) {
        return 0;
    }
    return decodeIdentify(file.text, out, max);
}

void getIDEInfoDirect(std::vector<IDEInfo>& drives) {
    // Most kernels have no driver of IDE any more.
    if (!isFolder(MachinePaths::ideFolder())) {
        return;
    }
    const MutexLock lock(_bufferMutex);
    for (char drive = 'a'; drive <= 'z'; ++drive) {
        if (readIdentify(drive, _buffer, sizeof _buffer) > 0) {
            drives.push_back({_text(_buffer + _modelOffset, _modelLength),
                              _text(_buffer + _serialNumberOffset, _serialNumberLength)});
        }
    }
}

}  // namespace QZ
