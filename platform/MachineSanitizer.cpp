// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineSanitizer.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

#include "FirmwareSecrets.h"
#include "MachinePaths.h"
#include "ScsiTransport.h"
#include "Secrets.h"

namespace QZ {

namespace {

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

bool isIdentify(const std::string& name) {
    const std::string pattern = nameBelowRoot(MachinePaths::ideIdentify('?'));
    const std::size_t letter = pattern.find('?');
    return startsAndEnds(name, pattern.substr(0, letter), pattern.substr(letter + 1));
}

bool isReplyTo(const ScsiCommand& command, const std::string& name) {
    const std::string pattern = nameBelowRoot(MachinePaths::scsiDisk('?'));
    return startsAndEnds(name, pattern.substr(0, pattern.find('?')), recordedReplyName(command));
}

bool isSerialNumberPage(const std::string& name) {
    return isReplyTo(ScsiSerialNumberInquiry, name) || startsAndEnds(name, "", "/vpd_pg80");
}

// An attribute that tells one disk or board from all others.
bool isDeviceNumber(const std::string& name) {
    constexpr const char* attributes[] = {"/serial", "/serial_number", "/board_tracer"};
    return std::any_of(std::begin(attributes), std::end(attributes),
                       [&](const char* end) { return startsAndEnds(name, "", end); });
}

// SPC-4, 7.8.14: the text is as long as the page says, and what a driver's buffer holds behind it
// may be a rest of another.
void addSerialNumberPage(const std::string& page, Secrets& secrets) {
    constexpr std::size_t Text = 4;
    if (page.size() <= Text)
        return;
    const std::size_t length = static_cast<unsigned char>(page[Text - 1]);
    secrets.addText(page.substr(Text, length));
    if (page.size() > Text + length)
        secrets.addText(page.substr(Text + length));
}

// What the kernel makes of a device's identification page: a kind, and a name of that kind.
void addDeviceName(const std::string& wwid, Secrets& secrets) {
    const std::string text = wwid.substr(0, wwid.find_last_not_of(" \n") + 1);
    const std::size_t name = text.find('.') + 1;
    const std::string kind = text.substr(0, name);
    if (kind == "naa." || kind == "eui." || kind == "uuid.") {
        secrets.addText(text.substr(name));
    } else if (kind == "t10.") {
        // Vendor and model stand in front of the serial number.
        secrets.addText(text.substr(std::max(name, text.find_last_of(' ') + 1)));
    } else if (kind == "nvme.") {
        // Vendor, serial number, model and namespace, the texts in hexadecimal.
        const std::size_t serial = std::min(text.find('-', name), text.size() - 1) + 1;
        secrets.addHexText(text.substr(serial, text.find('-', serial) - serial));
    } else {
        secrets.addText(text);
    }
}

// PCI 2.2, appendix I: keyword, length, text.
void addPciNumbers(const std::string& data, Secrets& secrets) {
    constexpr std::size_t Header = 3;
    for (std::size_t at = data.find("SN"); at != std::string::npos && at + Header < data.size();
         at = data.find("SN", at + 1))
        secrets.addText(data.substr(at + Header, static_cast<unsigned char>(data[at + 2])));
}

// ACS-3, 7.12.7: the serial number, the world wide name and the medium's serial number.
void addIdentifyData(const std::string& bytes, Secrets& secrets) {
    const auto words = [&bytes](std::size_t first, std::size_t last) {
        return bytes.size() < 2 * last + 2 ? std::string()
                                           : bytes.substr(2 * first, 2 * (last - first + 1));
    };
    secrets.addText(words(10, 19));
    secrets.addNumber(words(108, 111));
    secrets.addText(words(176, 205));
}

void addFile(const std::string& name, std::string& content, Secrets& secrets) {
    if (name == nameBelowRoot(MachinePaths::hostName()))
        secrets.addHostName(content);
    else if (name == nameBelowRoot(MachinePaths::machineId()) ||
             name == nameBelowRoot(MachinePaths::hypervisorUuid()) || isDeviceNumber(name))
        secrets.addText(content);
    else if (startsAndEnds(name, "", "/wwid"))
        addDeviceName(content, secrets);
    else if (isSerialNumberPage(name))
        addSerialNumberPage(content, secrets);
    else if (startsAndEnds(name, "", "/vpd"))
        addPciNumbers(content, secrets);
    else if (isIdentify(name))
        forIdentifyBytes(content,
                         [&secrets](const std::string& bytes) { addIdentifyData(bytes, secrets); });
}

// SPC-4, 6.6.2: bytes 36 to 55 and those from 96 on are the vendor's own, who may put the start of
// a serial number there. Nobody asks for them.
void blankVendorBytes(std::string& inquiry) {
    for (std::size_t at = 36; at < inquiry.size(); ++at)
        if ((at < 56 || at >= 96) && inquiry[at] != '\0')
            inquiry[at] = ' ';
}

void replaceInFile(const std::string& name, std::string& content, const Secrets& secrets) {
    if (isIdentify(name))
        forIdentifyBytes(content, [&secrets](std::string& bytes) { secrets.replaceIn(bytes); });
    else if (name.back() != '@')
        secrets.replaceIn(content);
    if (isReplyTo(ScsiStandardInquiry, name))
        blankVendorBytes(content);
}

}  // namespace

void sanitizeMachine(MachineFiles& files, const std::string& key) {
    Secrets secrets(key);
    const SmBios::Contents firmware = firmwareOf(files);
    addFirmwareSecrets(firmware, secrets);
    blankBeyondFirmware(firmware, files);
    for (auto& [name, content] : files)
        addFile(name, content, secrets);
    for (auto& [name, content] : files)
        replaceInFile(name, content, secrets);
}

}  // namespace QZ
