// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "AlertListener.h"
#include "AlertSource.h"
#include "RemoteServer.h"

namespace QZ {

// The alerts of a CIM server's model, which it sends to a listener in this process. The server must
// reach this machine under the address that this machine reaches it from.
class ServerAlerts : public AlertSource {
public:
    // The trust is for https.
    explicit ServerAlerts(const ServerAddress& address, const HttpTrust& trust = {});
    ~ServerAlerts() override;

    // Listens, and creates a filter, a destination and a subscription under names of their own.
    // Throws Error where the server cannot be reached or keeps no subscriptions, else CIMException
    // as it refuses them.
    void start(Take take) override;

    // Deletes what was created, and waits for alerts that are on their way in.
    void stop() noexcept override;

private:
    void _subscribe();
    Pegasus::CIMObjectPath _create(Pegasus::CIMInstance instance);

    const ServerAddress _address;
    RemoteServer _server;
    std::mutex _mutex;  // of the one who takes
    std::unique_ptr<AlertListener> _listener;
    Pegasus::CIMNamespaceName _interop;
    std::vector<Pegasus::CIMObjectPath> _created;  // in this order
};

}  // namespace QZ
