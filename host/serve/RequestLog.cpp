// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RequestLog.h"

#include <cstdio>
#include <ctime>
#include <nlohmann/json.hpp>

#include "Clock.h"
#include "LogText.h"

namespace QZ {

namespace {

// In the order in which it is written.
using Json = nlohmann::ordered_json;

// RFC 3339, in UTC.
std::string _now() {
    const std::time_t seconds = std::time_t(Clock::current().seconds());
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return std::string(text, length);
}

// What clients send may be no UTF-8.
std::string _line(const Json& json) {
    return json.dump(-1, ' ', true, Json::error_handler_t::replace);
}

double _milliseconds(const HttpLogRecord& record) {
    return double(record.time.count()) / 1000;
}

}  // namespace

std::string requestText(const HttpLogRecord& record) {
    char time[32];
    (void)std::snprintf(time, sizeof time, "%.1f ms", _milliseconds(record));
    std::string line;
    line.reserve(record.text.size() + 256);
    line.append(record.peer).append(" ");
    line.append(record.user.empty() ? "-" : textForLog(record.user)).append(" ");
    line.append(record.method.empty() ? "-" : textForLog(record.method)).append(" \"");
    line.append(record.text).append("\" ").append(std::to_string(record.status)).append(" ");
    return line.append(std::to_string(record.bytes)).append(" bytes ").append(time);
}

std::string requestJson(const HttpLogRecord& record) {
    return _line({{"time", _now()},
                  {"peer", record.peer},
                  {"user", textForLog(record.user)},
                  {"method", textForLog(record.method)},
                  {"operation", record.text},
                  {"status", record.status},
                  {"bytes", record.bytes},
                  {"milliseconds", _milliseconds(record)}});
}

std::string lossText(const HttpLosses& losses) {
    std::string text = std::to_string(losses.lost) +
                       (losses.lost == 1 ? " thread is" : " threads are") +
                       " with providers that have not answered in time; " +
                       std::to_string(losses.replaced) + " (lost-threads) are replaced";
    if (losses.lost <= losses.replaced) {
        return text;
    }
    return losses.turns == 0
               ? text + ": no request is answered until one comes back or the server starts again"
               : text + ": " + std::to_string(losses.turns) + " requests are answered at once";
}

std::string messageJson(const std::string& message) {
    return _line({{"time", _now()}, {"message", message}});
}

}  // namespace QZ
