// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <functional>

namespace QZ {

// Where alerts come from: the module in this process, or a server. Used by one thread.
class AlertSource {
public:
    // Called by any thread, by one at a time.
    using Take = std::function<void(const Pegasus::CIMInstance& alert)>;

    virtual ~AlertSource() = default;

    // Subscribes: each alert is handed to `take` from now on, once. Throws CIMException or Error
    // where that cannot be, and is as stopped then.
    virtual void start(Take take) = 0;

    // Unsubscribes. What was raised until then, also by the unsubscribing, has been handed over
    // when this returns. Nothing to do where it is not started. Throws nothing.
    virtual void stop() noexcept = 0;
};

}  // namespace QZ
