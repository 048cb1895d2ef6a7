// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "HttpServer.h"

namespace QZ {

// A request as a line for people: who, what, and what became of it.
std::string requestText(const HttpLogRecord& record);

// The same as a JSON object on one line, of ASCII characters: for programs that gather logs.
std::string requestJson(const HttpLogRecord& record);

// For an administrator: threads that providers keep, and what that costs.
std::string lossText(const HttpLosses& losses);

// Anything else that there is to say, in the same form.
std::string messageJson(const std::string& message);

}  // namespace QZ
