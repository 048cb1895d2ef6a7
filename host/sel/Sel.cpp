// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Sel.h"

#include <unistd.h>

#include <cerrno>

#include "Error.h"
#include "MachinePaths.h"
#include "SelOutput.h"

namespace QZ {

namespace {

// Records are numbered with two bytes, of which FFFFh is none.
constexpr std::size_t _mostRecords = 0xFFFF;

struct Log {
    std::vector<BmcSelEntry> entries;
    bool isComplete = false;
};

// A long log takes several calls, each of which goes on behind the one before.
Log _readLog(Bmc& bmc) {
    constexpr std::uint16_t end = 0xFFFF;
    Log log;
    BmcSelEntries part;
    part.next = 0;
    do {
        part = bmc.getSelEntries(part.next);
        log.entries.insert(log.entries.end(), part.entries.begin(), part.entries.end());
        log.isComplete = part.next == end;
    } while (!log.isComplete && !part.entries.empty() && log.entries.size() < _mostRecords);
    return log;
}

std::string _noControllerSentence() {
    const bool isOther = MachinePaths::isOtherMachine();
    const std::string path = isOther ? MachinePaths::managementControllerReplies()
                                     : MachinePaths::managementController();
    const bool isAllowed = access(path.c_str(), isOther ? R_OK : R_OK | W_OK) == 0;
    return "No management controller: " + path + ": " +
           (isAllowed ? std::string("does not answer") : systemErrorText(errno));
}

// False, and noted, where the log is not whole.
bool _checkWhole(const Log& log, const BmcSelInfo& info, const Notes& note) {
    const std::string count = std::to_string(log.entries.size());
    if (info.hasOverflowed) {
        note("The System Event Log was full: newer events are lost");
    }
    if (!log.isComplete) {
        note("The management controller stopped answering behind " + count + " records");
    } else if (log.entries.size() < info.entries) {
        note("The management controller tells of " + std::to_string(info.entries) +
             " records and gave " + count);
    }
    return log.isComplete && log.entries.size() >= info.entries;
}

}  // namespace

CommandResult listSel(const Request& request, Bmc& bmc, const Notes& note) {
    if (request.format == "mof") {
        throw UsageError("Events are no instances: \"sel\" writes table, json and csv");
    }
    const std::optional<BmcSelInfo> info = bmc.getSelInfo();
    if (!info) {
        note(bmc.getDeviceId() ? "The management controller keeps no System Event Log"
                               : _noControllerSentence());
        return {"", EXIT_NOT_FOUND};
    }
    const Log log = _readLog(bmc);
    const bool isWhole = _checkWhole(log, *info, note);
    const SdrContents repository = request.isRaw ? SdrContents() : bmc.getSdr();
    std::vector<SelEvent> events;
    events.reserve(log.entries.size());
    for (const BmcSelEntry& entry : log.entries) {
        events.push_back(describeEvent(entry, repository.sensors));
    }
    return {request.isRaw ? selBytes(events, request.format) : selText(events, request.format),
            isWhole ? EXIT_OK : EXIT_FAILED};
}

}  // namespace QZ
