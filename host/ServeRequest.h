// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace QZ {

// What "serve" is told of who may ask.
struct AccessRequest {
    std::string credentialsFile;  // empty: none
    bool usesPam = false;
    std::string pamFolder;                  // of its service's file; empty: the system's
    std::string readers = "tavqz-readers";  // Unix groups
    std::string writers = "tavqz-writers";
    std::string subscribers = "tavqz-subscribers";
};

// What it is told to bear.
struct ServeLimits {
    std::chrono::milliseconds idle{60'000};
    std::chrono::milliseconds header{10'000};
    std::chrono::milliseconds body{30'000};
    std::chrono::milliseconds answer{60'000};
    std::chrono::milliseconds sending{30'000};
    std::chrono::milliseconds stop{10'000};
    std::size_t headerBytes = std::size_t(16) << 10;
    std::size_t bodyBytes = std::size_t(4) << 20;
    std::size_t xmlDepth = 64;
    std::size_t xmlNodes = 65536;
    std::size_t connections = 256;
    std::size_t connectionsPerClient = 64;
    std::size_t requests = 8;
    std::size_t waitingRequests = 64;
    std::size_t lostThreads = 64;
    std::size_t enumerations = 64;
    std::size_t enumeratedObjects = 200'000;
    std::size_t checks = 4;
    std::size_t waitingChecks = 32;
};

// What "serve" is told. Files are absolute.
struct ServeRequest {
    std::vector<std::string> listen;  // "[http[s]://]ADDRESS[:PORT]"
    unsigned port = 5988;             // of those over http that name none; 0: any that is free
    std::vector<std::string> sockets;
    bool allowsPlain = false;
    std::string certificateFile;  // empty, with the key: our own
    std::string keyFile;
    std::string clientAuthorityFile;  // empty: clients are asked for no certificate
    std::string authorityFile;        // of listeners over https; empty: the system's
    std::string user = "tavqz";
    std::string passwordFile;  // empty: a password for this run
    AccessRequest access;
    std::string logFormat = "text";
    ServeLimits limits;
};

// Values by the names of their keys (ServeKeys.h), each checked already.
using ServeValues = std::map<std::string, std::vector<std::string>>;

// What the command line says of "serve", which counts before what the file says.
struct ServeArguments {
    std::string configFile;  // absolute; empty: none
    ServeValues values;
};

}  // namespace QZ
