// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "AlertSource.h"
#include "CommandLine.h"
#include "Schema.h"

namespace QZ {

// What a watch works with, besides where the alerts come from.
struct WatchPlace {
    const Schema& schema;                                // the source's
    std::string folder;                                  // where the request's command is run
    std::function<void(const std::string& text)> write;  // to standard output, and at once
    std::function<void(const std::string& line)> note;
};

// Shows each alert as it arrives and hands it to the request's command, one after the other, until
// SIGINT or SIGTERM, or until there were as many as the request counts. Alerts that arrive while
// the source is stopped are shown too: it will not raise them again. Blocks the signals: call it
// before there are other threads. Throws what the source and `write` do, with the source stopped.
ExitStatus watch(const Request& request, AlertSource& source, const WatchPlace& place);

}  // namespace QZ
