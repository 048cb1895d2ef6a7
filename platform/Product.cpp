// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Product.h"

#include <fcntl.h>
#include <sha256.h>
#include <strings.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <exception>
#include <string_view>
#include <vector>

#include "Error.h"
#include "File.h"
#include "FileContent.h"
#include "Folder.h"
#include "MachinePaths.h"
#include "MessageCatalogue.h"
#include "Text.h"
#include "Uuid.h"

namespace QZ {

namespace {

using Digest = std::array<unsigned char, SHA256_DIGEST_LENGTH>;

// Any fixed text that no other program uses.
constexpr std::string_view ApplicationId =
    "tavqz machine identity 6f1d0c52-9be4-4a53-8f2e-b07c1d9a3e48";

// HMAC-SHA256 (RFC 2104) for keys of at most one block.
Digest authenticationCode(std::string_view key, std::string_view message) {
    const auto keyBlock = [key](unsigned char pad) {
        std::array<unsigned char, SHA256_BLOCK_LENGTH> block{};
        std::copy(key.begin(), key.end(), block.begin());
        for (unsigned char& byte : block)
            byte = static_cast<unsigned char>(byte ^ pad);
        return block;
    };
    const auto hash = [](const auto& block, const auto& text) {
        SHA2_CTX context{};
        Digest digest{};
        SHA256Init(&context);
        SHA256Update(&context, block.data(), block.size());
        SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        SHA256Final(digest.data(), &context);
        return digest;
    };
    return hash(keyBlock(0x5C), hash(keyBlock(0x36), message));
}

// The 32 hexadecimal digits of the machine id; empty when the file holds something else, such as
// "uninitialized" on an image that has not been started.
std::string machineId() {
    constexpr std::size_t Digits = 32;
    const std::string text = readWholeFile(MachinePaths::machineId(), 4096).text;
    const std::size_t length = text.find_first_not_of("0123456789abcdef");
    const bool isLine = length == Digits && text[length] == '\n';
    return isLine || (length == std::string::npos && text.size() == Digits) ? text.substr(0, Digits)
                                                                            : std::string();
}

std::string messageFolder(const std::string& component) {
    const std::string folder = MachinePaths::messageFolder();
    return component.empty() ? folder : folder + '/' + component;
}

}  // namespace

std::wstring Product::getDataDirectory() {
    return make_wstring(MachinePaths::dataDirectory());
}

std::wstring Product::getVersion() {
    return make_wstring(TAVQZ_VERSION);
}

std::wstring Product::getUid() {
    const std::string machine = machineId();
    if (machine.empty())
        return {};
    const Digest code = authenticationCode(machine, ApplicationId);
    std::vector<unsigned char> bytes(code.begin(), code.begin() + 16);
    // Version 8 (our own kind), variant 1: RFC 9562, sections 4.1 and 5.8.
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x80U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
    return make_wstring(Uuid(std::move(bytes)).toString());
}

std::wstring Product::getResourceLibrary(const std::string& component,
                                         const std::string& languageId) {
    const std::string folder = messageFolder(component);
    return make_wstring(folder + '/' + MessageCatalogue::bestLanguage(folder, languageId));
}

bool Product::hasResourceLibrary(const std::string& component, const std::string& languageId) {
    const std::string language = languageId.substr(0, languageId.find_first_of("-_"));
    return strcasecmp(language.c_str(), "en") == 0 ||
           MessageCatalogue::bestLanguage(messageFolder(component), languageId) !=
               MessageCatalogue::Root;
}

bool Product::makeDataDirectory(std::string& reason) noexcept {
    try {
        const std::string folder = MachinePaths::dataDirectory();
        reason.clear();
        if (isFolder(folder))
            return true;
        for (std::size_t slash = folder.find('/', 1); slash != std::string::npos && reason.empty();
             slash = folder.find('/', slash + 1))
            reason = makeFolder(folder.substr(0, slash));
        return reason.empty();
    } catch (const std::exception&) {
        return false;
    }
}

bool Product::makeDataFile(const wchar_t* name) noexcept {
    try {
        std::string reason;
        if (!makeDataDirectory(reason)) {
            return false;
        }
        File file(getDataDirectory() + name);
        file.open(ReadMode | WriteMode);
        file.close();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace QZ
