// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ServeRequest.h"

namespace QZ {

// Something that "serve" can be told: "--name VALUE" on the command line, "name = VALUE" in its
// configuration file.
struct ServeKey {
    enum Kind {
        Text,
        File,    // or a folder: a relative path is one from where it is written
        Switch,  // "yes" or "no", and an option without a value
    };

    std::string name;
    Kind kind = Text;
    std::string type;         // of its value, for people: "FILE"
    std::string description;  // for the help
    bool isList = false;      // it may be given several times
    bool isReloaded = false;  // a running server takes a new value over
    bool isGlobal = false;    // an option of all commands, for which "serve" has no other
    // Throws UsageError with what is expected instead.
    std::function<void(ServeRequest& request, const std::string& value)> take = nullptr;
    std::string standard = {};  // value, where there is one
};

// All of them, in the order in which people are told.
const std::vector<ServeKey>& serveKeys();

// Null for a name that is none.
const ServeKey* findServeKey(const std::string& name);

// The value as the request takes it: a file's path from that folder. Throws UsageError with what is
// expected instead, without the name of the key.
std::string checkedServeValue(const ServeKey& key, const std::string& value,
                              const std::string& folder);

// The request that checked values make. Throws UsageError for those that exclude each other.
ServeRequest makeServeRequest(const ServeValues& values);

}  // namespace QZ
