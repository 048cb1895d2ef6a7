// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// What a machine's devices answer, and the files in which its kernel shows it.

// The 256 words that an ATA drive sends to be identified (ACS-3, 7.12.7), zero where nothing is
// put.
class IdentifyBuilder {
public:
    // A drive's texts as drives send them: the serial number to the right of its field, the model
    // to the left.
    static IdentifyBuilder drive(const std::string& model, const std::string& serial);

    IdentifyBuilder& word(std::size_t index, unsigned value);

    // Fills words from the index on, two characters to a word, the first one in its high byte.
    IdentifyBuilder& text(std::size_t index, const std::string& characters);

    // As /proc/ide/hd?/identify shows them: eight words to a line, four digits to a word.
    std::string build() const;

private:
    std::array<std::uint16_t, 256> _words{};
};

// Standard INQUIRY data of a disk, 36 bytes (SPC-4, 6.6.2).
std::string standardInquiryReply(const std::string& vendor, const std::string& product);

// Vital product data page 80h, with as many characters as the text has.
std::string serialNumberReply(const std::string& serial);

// The names of the files that hold them in a disk's folder.
extern const char* const standardInquiryFile;
extern const char* const serialNumberFile;

// Lays a disk that answers both below the root: dev/sd?.
void writeScsiDisk(const std::string& root, char letter, const std::string& vendor,
                   const std::string& product, const std::string& serial);
