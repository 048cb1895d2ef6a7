// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "Rights.h"

namespace QZ {

// Who asks, as far as somebody vouches for it.
struct Caller {
    enum Origin {
        Nobody,
        Password,
        LocalUser,  // the kernel knows
        Certificate,
    };

    std::string name;
    Rights rights;
    Origin origin = Nobody;
};

// What a client says of itself, and the kernel of a local one.
struct Login {
    std::string peer;          // the client's address; "uid 1000" of a local one
    bool isEncrypted = false;  // by TLS
    // The common name in its certificate, which was verified; or empty.
    std::string certificateName;
    bool hasPassword = false;
    std::string user;
    std::string password;
    std::optional<uid_t> localUser;
};

// Whether it comes over loopback or a Unix socket, which nobody else can listen to.
bool isOfThisMachine(const Login& login);

// Whether an address, as text, is one of loopback (RFC 1122, 3.2.1.3; RFC 4291, 2.5.3).
bool isLoopback(const std::string& address);

// Whom a peer's connections and wrong passwords count for: of IPv6 the network of 64 bits that one
// host has for itself, but for link-local addresses, which all hosts have in the same; an IPv4
// address that is mapped into IPv6 as itself (RFC 4291, 2.5.4 to 2.5.6). What is no address stays.
std::string clientOf(const std::string& peer);

// What comes of it.
struct Verdict {
    enum Kind {
        Accepted,
        Refused,   // no password, or a wrong one
        TooPlain,  // another machine's, in the clear
        TooOften,  // wrong passwords before, so that this one was not looked at
        Busy,      // too many are being looked at
    };

    Kind kind = Refused;
    Caller caller;                       // when Accepted
    std::chrono::seconds retryAfter{0};  // when TooOften or Busy
};

using TakeVerdict = std::function<void(const Verdict& verdict)>;

// A verdict that is known at once is returned; else none, and it is handed to `later`, once and on
// whatever thread, unless the server ends before. Must not throw.
using Authenticate =
    std::function<std::optional<Verdict>(const Login& login, const TakeVerdict& later)>;

}  // namespace QZ
