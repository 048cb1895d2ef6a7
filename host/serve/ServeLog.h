// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include "HttpServer.h"
#include "Serve.h"

namespace QZ {

// What a server says while it runs, as people or programs read it. Any thread.
class ServeLog {
public:
    explicit ServeLog(ServeOutput output) : _output(std::move(output)) {}

    void setJson(bool isJson) { _isJson = isJson; }

    void message(const std::string& line) const;
    void request(const HttpLogRecord& record) const;

private:
    const ServeOutput _output;
    std::atomic<bool> _isJson{false};
};

}  // namespace QZ
