// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Capture.h"

#include <sys/random.h>

#include <cerrno>

#include "ControllerRecord.h"
#include "Error.h"
#include "MachineRecord.h"
#include "MachineSanitizer.h"

namespace QZ {

namespace {

// Known to nobody after this run.
std::string _randomKey() {
    std::string key(32, '\0');
    if (getrandom(key.data(), key.size(), 0) != static_cast<ssize_t>(key.size())) {
        throwSystemError("Cannot read", "random bytes", errno);
    }
    return key;
}

}  // namespace

CommandResult captureMachine(const std::string& folder, bool isSanitized, const Notes& note) {
    MachineRecord record = recordMachine();
    recordController(record);
    if (isSanitized) {
        const std::string key = _randomKey();
        sanitizeController(record.files, key);
        sanitizeMachine(record.files, key);
    }
    writeMachine(record.files, folder);
    for (const std::string& problem : record.problems) {
        note(problem);
    }
    CommandResult result;
    for (const auto& [name, content] : record.files) {
        result.text += name + '\n';
    }
    return result;
}

}  // namespace QZ
