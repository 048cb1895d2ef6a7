// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "CommandLine.h"
#include "InProcessServer.h"

namespace QZ {

// Where what is said goes: one line at a time, from any thread.
struct ServeOutput {
    std::function<void(const std::string& line)> announce;  // a URL, once the server is ready
    std::function<void(const std::string& line)> log;       // a line a request, and what goes wrong
};

// Answers CIM clients until SIGTERM or SIGINT, and reads certificates, users and what can be
// changed of its configuration again at SIGHUP. It blocks these signals: call it before there are
// other threads. EXIT_OK after an orderly stop: requests have been answered. Where a provider did
// not come back by then nothing of it may be taken apart: the process ends within this call, with
// EXIT_FAILED. Throws UsageError for options that make no sense, Error for a file, an address or a
// certificate that cannot be used.
ExitStatus serve(const ServeArguments& arguments,
                 const std::function<std::unique_ptr<InProcessServer>()>& makeProviders,
                 const ServeOutput& output);

}  // namespace QZ
