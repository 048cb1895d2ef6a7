// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeKeys.h"

#include <algorithm>
#include <filesystem>
#include <limits>

#include "CommandLine.h"

namespace QZ {

namespace {

constexpr std::size_t LONGEST_TIME = 86'400;  // seconds: a day
constexpr std::size_t LARGEST_SIZE = std::size_t(1) << 30;
constexpr std::size_t LARGEST_COUNT = 1'000'000;
// Each has a thread.
constexpr std::size_t MOST_THREADS = 1000;
// XML is read by functions that call themselves.
constexpr std::size_t DEEPEST_XML = 1000;

// Where a key's value goes.
template <class Value>
using Place = Value& (*)(ServeRequest& request);

ServeKey _text(const char* name, const char* type, const char* description,
               Place<std::string> place) {
    ServeKey key{name, ServeKey::Text, type, description};
    key.take = [place](ServeRequest& request, const std::string& value) {
        if (value.empty()) {
            throw UsageError("a value is expected");
        }
        place(request) = value;
    };
    ServeRequest standard;
    key.standard = place(standard);
    return key;
}

ServeKey _file(const char* name, const char* type, const char* description,
               Place<std::string> place) {
    ServeKey key = _text(name, type, description, place);
    key.kind = ServeKey::File;
    return key;
}

ServeKey _list(const char* name, ServeKey::Kind kind, const char* type, const char* description,
               Place<std::vector<std::string>> place) {
    ServeKey key{name, kind, type, description, true};
    key.take = [place](ServeRequest& request, const std::string& value) {
        if (value.empty()) {
            throw UsageError("a value is expected");
        }
        place(request).push_back(value);
    };
    return key;
}

ServeKey _switch(const char* name, const char* description, Place<bool> place) {
    ServeKey key{name, ServeKey::Switch, "yes|no", description};
    key.take = [place](ServeRequest& request, const std::string& value) {
        if (value != "yes" && value != "no") {
            throw UsageError("yes or no is expected");
        }
        place(request) = value == "yes";
    };
    return key;
}

// Digits alone, no more than the most.
std::size_t _number(const std::string& value, std::size_t least, std::size_t most) {
    std::size_t number = 0;
    bool isNumber = !value.empty() && value.size() <= 10;
    for (const char c : value) {
        isNumber = isNumber && c >= '0' && c <= '9';
        if (isNumber && number <= most) {
            number = 10 * number + std::size_t(c - '0');
        }
    }
    if (!isNumber || number < least || number > most) {
        throw UsageError("a number from " + std::to_string(least) + " to " + std::to_string(most) +
                         " is expected");
    }
    return number;
}

template <class Number>
ServeKey _numberKey(const char* name, const char* type, const char* description,
                    Place<Number> place, std::size_t least, std::size_t most) {
    ServeKey key{name, ServeKey::Text, type, description};
    key.take = [place, least, most](ServeRequest& request, const std::string& value) {
        place(request) = Number(_number(value, least, most));
    };
    return key;
}

ServeKey _count(const char* name, const char* type, const char* description,
                Place<std::size_t> place, std::size_t least, std::size_t most) {
    ServeKey key = _numberKey(name, type, description, place, least, most);
    ServeRequest standard;
    key.standard = std::to_string(place(standard));
    return key;
}

// Seconds, with up to three digits behind a point.
std::chrono::milliseconds _milliseconds(const std::string& value) {
    const std::size_t point = std::min(value.find('.'), value.size());
    const std::string parts = value.substr(std::min(point + 1, value.size()));
    const bool isWhole = point == value.size();
    try {
        const std::size_t digits = isWhole ? 3 : _number(std::to_string(parts.size()), 1, 3);
        std::size_t part = isWhole ? 0 : _number(parts, 0, 999);
        for (std::size_t i = digits; i < 3; ++i) {
            part *= 10;
        }
        const std::size_t all = 1000 * _number(value.substr(0, point), 0, LONGEST_TIME) + part;
        return std::chrono::milliseconds(_number(std::to_string(all), 1, 1000 * LONGEST_TIME));
    } catch (const UsageError&) {
        throw UsageError("seconds from 0.001 to " + std::to_string(LONGEST_TIME) + " are expected");
    }
}

ServeKey _time(const char* name, const char* description, Place<std::chrono::milliseconds> place) {
    ServeKey key{name, ServeKey::Text, "SECONDS", description};
    key.take = [place](ServeRequest& request, const std::string& value) {
        place(request) = _milliseconds(value);
    };
    ServeRequest standard;
    key.standard = std::to_string(place(standard).count() / 1000);
    return key;
}

ServeKey _port() {
    const Place<unsigned> place = [](ServeRequest& request) -> unsigned& { return request.port; };
    ServeKey key = _numberKey("port", "PORT",
                              "The port of addresses over http that name none; 0: any that is free",
                              place, 0, std::numeric_limits<std::uint16_t>::max());
    key.standard = std::to_string(ServeRequest().port);
    return key;
}

ServeKey _logFormat() {
    ServeKey key{"log-format", ServeKey::Text, "FORMAT",
                 "How to write a line on standard error: text or json"};
    key.take = [](ServeRequest& request, const std::string& value) {
        if (value != "text" && value != "json") {
            throw UsageError("text or json is expected");
        }
        request.logFormat = value;
    };
    key.standard = ServeRequest().logFormat;
    return key;
}

ServeKey _reloaded(ServeKey key) {
    key.isReloaded = true;
    return key;
}

// A function that finds a member of a request.
#define PLACE(member) ([](ServeRequest & request) -> auto& { return request.member; })

void _addListeners(std::vector<ServeKey>& keys) {
    keys.push_back(_list("listen", ServeKey::Text, "ADDRESS",
                         "An address of this machine, [http[s]://]ADDRESS[:PORT]; else 127.0.0.1",
                         PLACE(listen)));
    keys.push_back(_port());
    keys.push_back(_list("socket", ServeKey::File, "PATH",
                         "A Unix socket, for clients on this machine; known by their user",
                         PLACE(sockets)));
    keys.push_back(_reloaded(
        _switch("allow-plain", "Answer other machines over http too, with passwords in the clear",
                PLACE(allowsPlain))));
    keys.push_back(_file("certificate", "FILE",
                         "The certificate (PEM) for https, and who issued it; else one is made",
                         PLACE(certificateFile)));
    keys.push_back(_file("key", "FILE", "The certificate's key (PEM)", PLACE(keyFile)));
    keys.push_back(_file("client-ca", "FILE",
                         "Know clients by certificates that these authorities (PEM) issued",
                         PLACE(clientAuthorityFile)));
}

ServeKey _listenersAuthorities() {
    ServeKey key = _file("cacert", "FILE", "Trust the listeners with these certificates (PEM)",
                         PLACE(authorityFile));
    key.isGlobal = true;
    return key;
}

void _addAccess(std::vector<ServeKey>& keys) {
    std::vector<ServeKey> access{
        _text("user", "NAME", "Who may ask", PLACE(user)),
        _file("password-file", "FILE",
              "The file whose first line is the password; else one is made", PLACE(passwordFile)),
        _file("credentials", "FILE", "The file of users that \"passwd\" keeps may ask",
              PLACE(access.credentialsFile)),
        _switch("pam", "The system's users may ask, with what their groups let them do",
                PLACE(access.usesPam)),
        _file("pam-folder", "DIR", "The folder of PAM's file \"tavqz\"; else the system's",
              PLACE(access.pamFolder)),
        _text("readers", "GROUP", "The group whose members may read", PLACE(access.readers)),
        _text("writers", "GROUP", "The group whose members may write asset data",
              PLACE(access.writers)),
        _text("subscribers", "GROUP", "The group whose members may subscribe to alerts",
              PLACE(access.subscribers)),
        _logFormat(),
    };
    for (ServeKey& key : access) {
        keys.push_back(_reloaded(std::move(key)));
    }
}

void _addTimes(std::vector<ServeKey>& keys) {
    const std::vector<ServeKey> times{
        _time("idle-time", "How long a connection may wait for a request", PLACE(limits.idle)),
        _time("header-time", "How long a request's header may take", PLACE(limits.header)),
        _time("body-time", "How long its body may take", PLACE(limits.body)),
        _time("answer-time", "How long a provider may take", PLACE(limits.answer)),
        _time("sending-time", "How long a client may take for a part of its answer",
              PLACE(limits.sending)),
        _time("stop-time", "How long what was asked is answered after SIGTERM", PLACE(limits.stop)),
    };
    keys.insert(keys.end(), times.begin(), times.end());
}

void _addSizes(std::vector<ServeKey>& keys) {
    const std::vector<ServeKey> sizes{
        _count("header-size", "BYTES", "The largest header", PLACE(limits.headerBytes), 1024,
               LARGEST_SIZE),
        _count("body-size", "BYTES", "The largest body", PLACE(limits.bodyBytes), 1024,
               LARGEST_SIZE),
        _count("xml-depth", "N", "Elements within one another", PLACE(limits.xmlDepth), 16,
               DEEPEST_XML),
        _count("xml-nodes", "N", "Elements and attributes of a request", PLACE(limits.xmlNodes), 16,
               10 * LARGEST_COUNT),
        _count("connections", "N", "Connections at once", PLACE(limits.connections), 1,
               LARGEST_COUNT),
        _count("connections-per-client", "N", "Connections of one address, or one local user",
               PLACE(limits.connectionsPerClient), 1, LARGEST_COUNT),
        _count("requests", "N", "Requests that are answered at once", PLACE(limits.requests), 1,
               MOST_THREADS),
        _count("waiting-requests", "N", "Requests that wait for that",
               PLACE(limits.waitingRequests), 0, LARGEST_COUNT),
        _count("lost-threads", "N", "Threads that providers may keep before it has fewer",
               PLACE(limits.lostThreads), 0, MOST_THREADS),
        _count("enumerations", "N", "Enumerations that clients fetch in pieces",
               PLACE(limits.enumerations), 1, LARGEST_COUNT),
        _count("enumerated-objects", "N", "Objects that those keep, all together",
               PLACE(limits.enumeratedObjects), 1, 10 * LARGEST_COUNT),
        _reloaded(_count("checks", "N", "Passwords that are looked at at once",
                         PLACE(limits.checks), 1, MOST_THREADS)),
        _reloaded(_count("waiting-checks", "N", "Passwords that wait to be looked at",
                         PLACE(limits.waitingChecks), 1, LARGEST_COUNT)),
    };
    keys.insert(keys.end(), sizes.begin(), sizes.end());
}

#undef PLACE

bool _has(const ServeValues& values, const char* name) {
    return values.find(name) != values.end();
}

void _requireSense(const ServeValues& values, const ServeRequest& request) {
    const bool hasUser = _has(values, "user") || _has(values, "password-file");
    const bool hasFile = _has(values, "credentials");
    if (int(hasUser) + int(hasFile) + int(request.access.usesPam) > 1) {
        throw UsageError(
            "credentials, pam, and user with password-file: only one says who may ask");
    }
    if (_has(values, "pam-folder") && !request.access.usesPam) {
        throw UsageError("pam-folder: pam is needed, too");
    }
    if (_has(values, "certificate") != _has(values, "key")) {
        throw UsageError("certificate and key: each needs the other");
    }
}

}  // namespace

const std::vector<ServeKey>& serveKeys() {
    static const std::vector<ServeKey> KEYS = [] {
        std::vector<ServeKey> keys;
        _addListeners(keys);
        keys.push_back(_listenersAuthorities());
        _addAccess(keys);
        _addTimes(keys);
        _addSizes(keys);
        return keys;
    }();
    return KEYS;
}

const ServeKey* findServeKey(const std::string& name) {
    const std::vector<ServeKey>& keys = serveKeys();
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&name](const ServeKey& key) { return key.name == name; });
    return found == keys.end() ? nullptr : &*found;
}

std::string checkedServeValue(const ServeKey& key, const std::string& value,
                              const std::string& folder) {
    ServeRequest scratch;
    key.take(scratch, value);
    return key.kind == ServeKey::File ? (std::filesystem::path(folder) / value).string() : value;
}

ServeRequest makeServeRequest(const ServeValues& values) {
    ServeRequest request;
    for (const ServeKey& key : serveKeys()) {
        const auto given = values.find(key.name);
        if (given != values.end()) {
            for (const std::string& value : given->second) {
                key.take(request, value);
            }
        }
    }
    _requireSense(values, request);
    return request;
}

}  // namespace QZ
