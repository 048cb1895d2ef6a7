// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "IpmiCommand.h"

namespace QZ {

// A way to the controller that nobody else of ours has at the same time, on the whole machine.
// Used by one thread at a time.
class IpmiConnection {
public:
    enum class Outcome {
        Replied,
        TimedOut,  // Whatever comes later is lost.
        Failed,    // The controller or its driver is gone.
    };

    virtual ~IpmiConnection() = default;

    // Sends a command and waits so many milliseconds for its reply.
    virtual Outcome send(const IpmiRequest& request, IpmiReply& reply, int milliseconds) = 0;
};

// The one way to the machine's management controller, so that a test can answer in its place. Any
// thread may call it.
class IpmiTransport {
public:
    virtual ~IpmiTransport() = default;

    // Waits so many milliseconds for others to finish. Null where there is no controller, or they
    // did not.
    virtual std::unique_ptr<IpmiConnection> open(int milliseconds) = 0;

    // The machine's controller, unless an IpmiTransportReplacement is alive; on another machine
    // (MachinePaths::isOtherMachine) what was recorded of its controller, see IpmiReplies.
    static IpmiTransport& current();

    // Another number whenever the current transport has become another one.
    static unsigned generation();
};

// Puts another transport in the machine's place for as long as it lives. The transport stays the
// caller's and must outlive it. Replacements nest; they are made and ended by one thread.
class IpmiTransportReplacement {
public:
    explicit IpmiTransportReplacement(IpmiTransport& transport);
    ~IpmiTransportReplacement();
    IpmiTransportReplacement(const IpmiTransportReplacement&) = delete;
    IpmiTransportReplacement& operator=(const IpmiTransportReplacement&) = delete;

private:
    IpmiTransport* _previous;
};

}  // namespace QZ
