// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PasswordHash.h"

#include <crypt.h>

#include <memory>

#include "Error.h"

namespace QZ {

namespace {

constexpr const char* METHOD = "$y$";

// Empty where none can be made. What crypt() works on is too large for a stack.
std::string _crypt(const std::string& password, const std::string& setting) {
    if (password.empty() || password.size() >= CRYPT_MAX_PASSPHRASE_SIZE ||
        password.find('\0') != std::string::npos) {
        return {};
    }
    const auto data = std::make_unique<crypt_data>();
    const char* const hash =
        crypt_rn(password.c_str(), setting.c_str(), data.get(), int(sizeof *data));
    return hash ? hash : "";
}

}  // namespace

std::string hashPassword(const std::string& password) {
    char setting[CRYPT_GENSALT_OUTPUT_SIZE];
    // 0: the method's own idea of the effort; null: random bytes of the system.
    if (!crypt_gensalt_rn(METHOD, 0, nullptr, 0, setting, int(sizeof setting))) {
        throw Error("Cannot hash a password: the system has no yescrypt or no random numbers");
    }
    std::string hash = _crypt(password, setting);
    if (hash.empty()) {
        throw Error("A password has from 1 to 511 bytes, none of them zero");
    }
    return hash;
}

bool matchesHash(const std::string& password, const std::string& hash) {
    const std::string given = _crypt(password, hash);
    return !given.empty() && equalHashes(given, hash);
}

bool isPasswordHash(const std::string& text) {
    return crypt_checksalt(text.c_str()) == CRYPT_SALT_OK;
}

bool equalHashes(const std::string& left, const std::string& right) {
    unsigned difference = left.size() == right.size() ? 0U : 1U;
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        difference |= static_cast<unsigned char>(left[i] ^ right[i]);
    }
    return difference == 0;
}

}  // namespace QZ
