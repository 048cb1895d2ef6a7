// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Remembered.h"

#include <openssl/evp.h>
#include <sys/random.h>

#include <utility>

#include "Clock.h"
#include "Error.h"

namespace QZ {

namespace {

constexpr std::size_t KEY_BYTES = 32;

// With its length, so that no two lists of texts are the same bytes.
void _append(std::string& bytes, const std::string& text) {
    bytes.append(std::to_string(text.size())).append(":").append(text);
}

}  // namespace

void LoginDigest::FreeHash::operator()(evp_md_st* hash) const {
    EVP_MD_free(hash);
}

LoginDigest::LoginDigest()
    : _key(KEY_BYTES, '\0'), _hash(EVP_MD_fetch(nullptr, "SHA256", nullptr)) {
    if (getrandom(_key.data(), _key.size(), 0) != ssize_t(KEY_BYTES)) {
        throw Error("Cannot make a key: the system has no random numbers");
    }
}

// The peer is part of it: from elsewhere the same password may be refused. The key stands first:
// that is enough where a digest is shown to nobody.
std::string LoginDigest::of(const Login& login) const {
    std::string bytes = _key;
    _append(bytes, login.peer);
    _append(bytes, login.localUser ? std::to_string(*login.localUser) : "");
    _append(bytes, login.hasPassword ? login.user : "");
    _append(bytes, login.hasPassword ? login.password : "");
    _append(bytes, login.hasPassword ? "" : login.certificateName);
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), digest, &size, _hash.get(), nullptr) != 1) {
        throw Error("Cannot hash a password: OpenSSL has no SHA-256");
    }
    return {reinterpret_cast<const char*>(digest), size};
}

void Remembered::_makeRoom(std::int64_t now) {
    if (_entries.size() < _limits.callers) {
        return;
    }
    for (auto entry = _entries.begin(); entry != _entries.end();) {
        entry = entry->second.until <= now ? _entries.erase(entry) : std::next(entry);
    }
    if (_entries.size() >= _limits.callers) {
        _entries.clear();  // they are asked for their passwords again
    }
}

void Remembered::add(const std::string& digest, const Caller& caller, std::uint64_t revision) {
    const std::int64_t now = Clock::current().milliseconds();
    _makeRoom(now);
    _entries[digest] = {caller, now + _limits.time.count(), revision};
}

std::optional<Caller> Remembered::find(const std::string& digest, std::uint64_t revision) {
    const auto found = _entries.find(digest);
    if (found == _entries.end()) {
        return std::nullopt;
    }
    const Entry& entry = found->second;
    if (entry.revision != revision || entry.until <= Clock::current().milliseconds()) {
        _entries.erase(found);
        return std::nullopt;
    }
    return entry.caller;
}

}  // namespace QZ
