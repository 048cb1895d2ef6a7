// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <cstdint>
#include <functional>

#include "EventJournal.h"

namespace QZ {

struct ExpiryRow;

// Looks whether the lease and the warranty have run out, and makes an alert of each change. An end
// date's own day still counts: its calendar day as written is held against the machine's. Without
// an end date nothing runs out. Used by one thread at a time.
class ExpiryCheck {
public:
    using Deliver = std::function<void(const Pegasus::CIMInstance& alert)>;

    // One check of both records. Alerts are made through the handle, see spawnInstance(). What
    // fails, or what `deliver` throws, ends the check; a change whose alert could not be delivered
    // is not told again.
    void check(Pegasus::CIMOMHandle* handle, const Deliver& deliver);

private:
    // A state that no check comes to, so that the first one goes on to the journal.
    static constexpr std::uint16_t _nothingYet = 0xFFFF;

    bool _isChange(const ExpiryRow& row, std::uint16_t state);

    std::uint16_t _lastStates[2] = {_nothingYet, _nothingYet};
    EventJournal _journal;
};

}  // namespace QZ
