// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineSanitizer.h"

#include <sha256.h>

#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "MachinePaths.h"
#include "ScsiTransport.h"
#include "SmBiosDecoder.h"

namespace QZ {

namespace {

constexpr std::size_t ShortestSecret = 4;

// Longer ones first: a serial number may be the start of another.
struct LongerFirst {
    bool operator()(const std::string& one, const std::string& other) const {
        return one.size() != other.size() ? one.size() > other.size() : one < other;
    }
};

std::string digest(const std::string& key, const std::string& text) {
    std::array<char, SHA256_DIGEST_LENGTH> result{};
    SHA2_CTX context{};
    SHA256Init(&context);
    for (const std::string* part : {&key, &text})
        SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(part->data()), part->size());
    SHA256Final(reinterpret_cast<std::uint8_t*>(result.data()), &context);
    return {result.data(), result.size()};
}

// The texts to be replaced, each with what it becomes.
class Secrets {
public:
    explicit Secrets(std::string key) : _key(std::move(key)) {}

    // A text, but for blanks around it.
    void addText(const std::string& field) {
        const std::size_t first = field.find_first_not_of(" \n");
        if (first == std::string::npos)
            return;
        const std::string text = field.substr(first, field.find_last_not_of(" \n") + 1 - first);
        if (text.size() >= ShortestSecret)
            _replacements.emplace(text, pseudonym(text));
    }

    void addBytes(const std::string& bytes) { _replacements.emplace(bytes, chance(bytes)); }

    void replaceIn(std::string& content) const {
        for (const auto& [secret, replacement] : _replacements)
            for (std::size_t at = content.find(secret); at != std::string::npos;
                 at = content.find(secret, at + secret.size()))
                content.replace(at, secret.size(), replacement);
    }

private:
    // Bytes that follow from key and secret, as many as the secret has.
    std::string chance(const std::string& secret) const {
        const std::string seed = digest(_key, secret);
        std::string bytes;
        for (unsigned block = 0; bytes.size() < secret.size(); ++block)
            bytes += digest(seed, std::to_string(block));
        bytes.resize(secret.size());
        return bytes;
    }

    std::string pseudonym(const std::string& text) const {
        // A hexadecimal number stays one.
        const bool isHexadecimal =
            text.find_first_not_of("0123456789abcdefABCDEF-") == std::string::npos;
        const unsigned letters = isHexadecimal ? 6 : 26;
        const std::string bytes = chance(text);
        std::string result = text;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            if (text[i] >= '0' && text[i] <= '9')
                result[i] = static_cast<char>('0' + byte % 10);
            else if (text[i] >= 'a' && text[i] <= 'z')
                result[i] = static_cast<char>('a' + byte % letters);
            else if (text[i] >= 'A' && text[i] <= 'Z')
                result[i] = static_cast<char>('A' + byte % letters);
        }
        return result;
    }

    std::string _key;
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
                         recordedReplyName(ScsiSerialNumberInquiry));
}

void addFile(const std::string& name, std::string& content, Secrets& secrets) {
    if (name == nameOf(MachinePaths::hostName()) || name == nameOf(MachinePaths::machineId()) ||
        name == nameOf(MachinePaths::hypervisorUuid())) {
        secrets.addText(content);
    } else if (isSerialNumberPage(name)) {
        constexpr std::size_t Text = 4;
        if (content.size() > Text)
            secrets.addText(content.substr(Text));
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
        else
            secrets.replaceIn(content);
    }
}

}  // namespace QZ
