// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Event.h"
#include "Thread.h"

namespace QZ {

// Lets an AssetIDProvider, the argument of start(), check its conditions: five seconds after the
// start and once an hour from then on. What a check throws is dropped.
class AssetIDIndicationThread : public Thread {
public:
    // Ends the waiting; join() then returns as soon as the check is done that is under way. The
    // first check is made in any case.
    void stop() { _stop.set(); }

protected:
    int run(void* provider) override;

private:
    Event _stop;
};

}  // namespace QZ
