// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>

namespace QZ {

// Sends what the socket takes without waiting. The number of bytes, or -1 for a connection that is
// lost.
ssize_t sendNow(int socket, const char* bytes, std::size_t size);

// Sends all of it, waiting for the client for that long. False where it does not take it.
bool sendAll(int socket, const std::string& bytes, std::chrono::milliseconds time);

}  // namespace QZ
