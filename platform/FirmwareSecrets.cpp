// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FirmwareSecrets.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "MachinePaths.h"
#include "SmBiosDecoder.h"

namespace QZ {

namespace {

constexpr std::size_t HeaderLength = 4;
constexpr std::size_t UuidLength = 16;

// Of structure types (DSP0134, chapter 7).
constexpr unsigned char System = 1;
constexpr unsigned char OemStrings = 11;
constexpr unsigned char HostInterface = 42;
constexpr unsigned char FirstOfMakers = 128;

// Where a structure has the numbers of its secret texts.
std::vector<std::size_t> secretFields(unsigned char type) {
    switch (type) {
        case System:
            return {0x07};
        case 2:
        case 3:
            return {0x07, 0x08};
        case 4:
            return {0x20, 0x21};
        case 17:
            return {0x18, 0x19};
        case 22:
            return {0x07};
        case 39:
            return {0x08, 0x09};
        default:
            return {};
    }
}

std::string bytesOf(const SmBios::Table& table, std::size_t offset, std::size_t count) {
    std::string bytes;
    for (std::size_t end = offset + count; offset < end && offset < table.getLength(); ++offset)
        bytes += static_cast<char>(table.getByte(offset));
    return bytes;
}

// DSP0270, 6.2: a host interface's own data, then the records of the protocols that it speaks. The
// one of Redfish over IP names the service and its host.
void addHostInterface(const SmBios::Table& table, Secrets& secrets) {
    constexpr unsigned char RedfishOverIp = 4;
    constexpr std::size_t NameOffset = 90;
    std::size_t at = std::size_t{6} + table.getByte(5);
    for (unsigned count = table.getByte(at++); count > 0; --count) {
        const std::string record = bytesOf(table, at + 2, table.getByte(at + 1));
        if (table.getByte(at) == RedfishOverIp && record.size() >= UuidLength) {
            secrets.addNumber(record.substr(0, UuidLength));
            if (record.size() > NameOffset)
                secrets.addHostName(
                    record.substr(NameOffset + 1, static_cast<unsigned char>(record[NameOffset])));
        }
        at += std::size_t{2} + table.getByte(at + 1);
    }
}

// Whether a maker's text names a number: "Service Tag", "System S/N".
bool isNumberName(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                    : character;
    });
    constexpr const char* words[] = {"serial", "tag", "s/n", "uuid", "guid", "asset", "host"};
    return std::any_of(std::begin(words), std::end(words),
                       [&name](const char* word) { return name.find(word) != std::string::npos; });
}

// Makers put names and values into texts of their own: "Service Tag: ABC1234; Rev=2".
void addNamedNumbers(const std::string& text, Secrets& secrets) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of(",;", at), text.size());
        const std::size_t mark = text.find_first_of(":=", at);
        if (mark < end && isNumberName(text.substr(at, mark - at)))
            secrets.addText(text.substr(mark + 1, end - mark - 1));
        at = end + 1;
    }
}

// Where the table's structures end, without a string that the bytes end in.
std::size_t shownLength(const SmBios::Contents& firmware, const std::string& bytes) {
    std::size_t at = 0;
    for (const SmBios::Table& table : firmware.tables) {
        const std::size_t strings = at + table.getLength();
        const std::size_t end = bytes.find(std::string(2, '\0'), strings);
        if (end == std::string::npos) {
            const std::size_t lastNul = bytes.find_last_of('\0');
            return lastNul != std::string::npos && lastNul >= strings ? lastNul + 1 : strings;
        }
        at = end + 2;
    }
    return at;
}

}  // namespace

SmBios::Contents firmwareOf(const MachineFiles& files) {
    const auto entryPoint = files.find(nameBelowRoot(MachinePaths::smbiosEntryPoint()));
    const auto table = files.find(nameBelowRoot(MachinePaths::smbiosTable()));
    return table == files.end()
               ? SmBios::Contents()
               : decodeSmBios(entryPoint == files.end() ? "" : entryPoint->second, table->second);
}

std::string uuidOf(const SmBios::Table& system) {
    constexpr std::size_t Offset = 8;
    if (system.getType() != System || system.getLength() < Offset + UuidLength)
        return {};
    return bytesOf(system, Offset, UuidLength);
}

void addFirmwareSecrets(const SmBios::Contents& firmware, Secrets& secrets) {
    for (const SmBios::Table& table : firmware.tables) {
        for (const std::size_t field : secretFields(table.getType()))
            if (const char* const text = table.getString(table.getByte(field)))
                secrets.addText(text);
        secrets.addNumber(uuidOf(table));
        if (table.getType() == HostInterface)
            addHostInterface(table, secrets);
        if (table.getType() != OemStrings && table.getType() < FirstOfMakers)
            continue;
        const char* text = nullptr;
        for (unsigned i = 1; (text = table.getString(i)) != nullptr; ++i)
            addNamedNumbers(text, secrets);
    }
}

void blankBeyondFirmware(const SmBios::Contents& firmware, MachineFiles& files) {
    const auto file = files.find(nameBelowRoot(MachinePaths::smbiosTable()));
    if (file == files.end())
        return;
    std::string& bytes = file->second;
    std::size_t at = shownLength(firmware, bytes);
    // A header that is none is what the reading ends at.
    const std::size_t left = bytes.size() - at;
    if (left >= HeaderLength) {
        const std::size_t length = static_cast<unsigned char>(bytes[at + 1]);
        if (length < HeaderLength || length > left)
            at += HeaderLength;
    }
    // Zeros would end strings.
    std::replace_if(
        bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end(),
        [](char byte) { return byte != '\0'; }, ' ');
}

}  // namespace QZ
