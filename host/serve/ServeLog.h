// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "HttpServer.h"
#include "PrintedLines.h"

namespace QZ {

// What a server says while it runs, as people or programs read it. Any thread, but for setJson.
class ServeLog {
public:
    using Text = std::function<void(const std::string& line)>;

    // Text for people goes there, as what is printed does; neither is touched for programs.
    explicit ServeLog(Text text) : _text(std::move(text)) {}

    // Or back to text. For programs each line is an object, also where somebody else prints it.
    // Throws Error where what is printed cannot be taken.
    void setJson(bool isJson);
    bool isJson() const { return _isJson; }

    void message(const std::string& line) const;
    void request(const HttpLogRecord& record) const;

private:
    const Text _text;
    std::atomic<bool> _isJson{false};
    PrintedLines _printed;
};

}  // namespace QZ
