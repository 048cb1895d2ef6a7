// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineSanitizer.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

#include "MachinePaths.h"
#include "Pseudonyms.h"
#include "ScsiTransport.h"
#include "SmBiosDecoder.h"

namespace QZ {

namespace {

// Longer ones first: a serial number may be the start of another.
struct LongerFirst {
    bool operator()(const std::string& one, const std::string& other) const {
        return one.size() != other.size() ? one.size() > other.size() : one < other;
    }
};

// The texts to be replaced, each with what it becomes.
class Secrets {
public:
    explicit Secrets(const std::string& key) : _pseudonyms(key) {}

    // A text, but for blanks around it.
    void addText(const std::string& field) {
        const std::string text = secretIn(field);
        if (!text.empty())
            _replacements.emplace(text, _pseudonyms.ofText(text));
    }

    void addBytes(const std::string& bytes) {
        _replacements.emplace(bytes, _pseudonyms.ofBytes(bytes));
    }

    void replaceIn(std::string& content) const {
        for (const auto& [secret, replacement] : _replacements)
            for (std::size_t at = content.find(secret); at != std::string::npos;
                 at = content.find(secret, at + secret.size()))
                content.replace(at, secret.size(), replacement);
    }

private:
    Pseudonyms _pseudonyms;
    std::map<std::string, std::string, LongerFirst> _replacements;
};

// Where a structure has the numbers of its secret texts (DSP0134, chapter 7).
std::vector<std::size_t> secretFields(unsigned char type) {
    switch (type) {
        case 1:
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

void addFirmware(const SmBios::Contents& contents, Secrets& secrets) {
    constexpr unsigned char UuidOffset = 8;
    constexpr unsigned char UuidLength = 16;
    for (const SmBios::Table& table : contents.tables) {
        for (const std::size_t field : secretFields(table.getType()))
            if (const char* const text = table.getString(table.getByte(field)))
                secrets.addText(text);
        if (table.getType() != 1 || table.getLength() < UuidOffset + UuidLength)
            continue;
        std::string uuid;
        for (unsigned i = 0; i < UuidLength; ++i)
            uuid += static_cast<char>(table.getByte(UuidOffset + i));
        // All bytes the same: there is none.
        if (uuid != std::string(UuidLength, uuid.front()))
            secrets.addBytes(uuid);
    }
}

// The bytes that an identify file shows, two digits to a byte, as the kernel prints them.
void forIdentifyBytes(std::string& text, const std::function<void(std::string& bytes)>& use) {
    constexpr char digits[] = "0123456789abcdef";
    const std::string known = digits;
    std::vector<std::size_t> places;
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t value = known.find(text[i]);
        if (value == std::string::npos)
            continue;
        if (places.size() % 2 == 0)
            bytes += static_cast<char>(value << 4U);
        else
            bytes.back() = static_cast<char>(static_cast<unsigned char>(bytes.back()) | value);
        places.push_back(i);
    }
    use(bytes);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i / 2]);
        text[places[i]] = digits[i % 2 == 0 ? byte >> 4U : byte & 0xFU];
    }
}

bool startsAndEnds(const std::string& name, const std::string& start, const std::string& end) {
    return name.size() >= start.size() + end.size() && name.compare(0, start.size(), start) == 0 &&
           name.compare(name.size() - end.size(), end.size(), end) == 0;
}

// The name of the machine's file below its root.
std::string nameOf(const std::string& path) {
    return path.substr(MachinePaths::root().size() + 1);
}

bool isIdentify(const std::string& name) {
    const std::string pattern = nameOf(MachinePaths::ideIdentify('?'));
    const std::size_t letter = pattern.find('?');
    return startsAndEnds(name, pattern.substr(0, letter), pattern.substr(letter + 1));
}

bool isSerialNumberPage(const std::string& name) {
    const std::string pattern = nameOf(MachinePaths::scsiDisk('?'));
    return startsAndEnds(name, pattern.substr(0, pattern.find('?')),
                         recordedReplyName(ScsiSerialNumberInquiry)) ||
           startsAndEnds(name, "", "/vpd_pg80");
}

// An attribute that tells one disk or board from all others.
bool isDeviceNumber(const std::string& name) {
    constexpr const char* attributes[] = {"/serial", "/serial_number", "/board_tracer", "/wwid"};
    return std::any_of(std::begin(attributes), std::end(attributes),
                       [&](const char* end) { return startsAndEnds(name, "", end); });
}

// PCI 2.2, appendix I: keyword, length, text.
void addPciNumbers(const std::string& data, Secrets& secrets) {
    constexpr std::size_t Header = 3;
    for (std::size_t at = data.find("SN"); at != std::string::npos && at + Header < data.size();
         at = data.find("SN", at + 1))
        secrets.addText(data.substr(at + Header, static_cast<unsigned char>(data[at + 2])));
}

void addFile(const std::string& name, std::string& content, Secrets& secrets) {
    if (name == nameOf(MachinePaths::hostName()) || name == nameOf(MachinePaths::machineId()) ||
        name == nameOf(MachinePaths::hypervisorUuid()) || isDeviceNumber(name)) {
        secrets.addText(content);
    } else if (isSerialNumberPage(name)) {
        constexpr std::size_t Text = 4;
        if (content.size() > Text)
            secrets.addText(content.substr(Text));
    } else if (startsAndEnds(name, "", "/vpd")) {
        addPciNumbers(content, secrets);
    } else if (isIdentify(name)) {
        // ACS-3, 7.12.7: words 10 to 19.
        forIdentifyBytes(content, [&secrets](const std::string& bytes) {
            if (bytes.size() >= 40)
                secrets.addText(bytes.substr(20, 20));
        });
    }
}

}  // namespace

void sanitizeMachine(MachineFiles& files, const std::string& key) {
    Secrets secrets(key);
    const auto table = files.find(nameOf(MachinePaths::smbiosTable()));
    if (table != files.end())
        addFirmware(decodeSmBios({}, table->second), secrets);
    for (auto& [name, content] : files)
        addFile(name, content, secrets);
    for (auto& [name, content] : files) {
        if (isIdentify(name))
            forIdentifyBytes(content, [&secrets](std::string& bytes) { secrets.replaceIn(bytes); });
        else if (name.back() != '@')
            secrets.replaceIn(content);
    }
}

}  // namespace QZ
