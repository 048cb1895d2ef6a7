// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeLog.h"

#include "RequestLog.h"

namespace QZ {

// A line of text that comes meanwhile is printed, too.
void ServeLog::setJson(bool isJson) {
    if (isJson == _isJson) {
        return;
    }
    if (isJson) {
        _printed.take([this](const std::string& line) { _printed.write(messageJson(line)); });
    } else {
        _printed.release();
    }
    _isJson = isJson;
}

void ServeLog::message(const std::string& line) const {
    _isJson ? _printed.write(messageJson(line)) : _text(line);
}

void ServeLog::request(const HttpLogRecord& record) const {
    _isJson ? _printed.write(requestJson(record)) : _text(requestText(record));
}

}  // namespace QZ
