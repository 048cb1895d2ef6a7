// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "JournalFile.h"

namespace QZ {

// Remembers the last state that was reported for each source of events, in "assetidprv.evt" of the
// data folder, so that no state is reported twice, also after a restart. Used by one thread at a
// time.
class EventJournal {
public:
    // True where the state is the one last recorded for the source; a source that was never seen
    // is in state 0. Else the state is recorded, and false is answered even where that fails: the
    // file catches up with the next change. The file is read once, at the first call.
    bool checkForRedundantEvent(int type, int node, int index, int state);

private:
    void _save(const std::string& path) const;

    JournalStates _states;
    bool _isLoaded = false;
};

}  // namespace QZ
