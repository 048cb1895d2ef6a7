// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "AlertFields.h"
#include "StopSignals.h"

namespace QZ {

// A command of the user's that each alert is handed to: run by the shell, in the folder (empty:
// ours), with the alert's fields in its environment as TAVQZ_ALERT_CLASS, _DESCRIPTION, _EVENT_ID,
// _PROVIDER, _SEVERITY, _SEVERITY_NAME, _SYSTEM, _SYSTEM_ID and _TIME. It has no input; what it
// prints goes where ours goes.
class AlertCommand {
public:
    // A signal to stop that arrives while the command runs is passed on to it; its end is waited
    // for all the same. The signals must outlive this object.
    AlertCommand(std::string command, std::string folder, StopSignals& signals);

    // Runs it to its end. Empty where it ended with 0; else what went wrong, a sentence.
    std::string run(const AlertFields& fields);

private:
    int _wait(int child);

    std::string _command;
    std::string _folder;
    StopSignals& _signals;
};

}  // namespace QZ
