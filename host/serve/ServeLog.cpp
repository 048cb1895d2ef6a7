// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeLog.h"

#include "RequestLog.h"

namespace QZ {

void ServeLog::message(const std::string& line) const {
    _isJson ? _output.json(messageJson(line)) : _output.log(line);
}

void ServeLog::request(const HttpLogRecord& record) const {
    _isJson ? _output.json(requestJson(record)) : _output.log(requestText(record));
}

}  // namespace QZ
