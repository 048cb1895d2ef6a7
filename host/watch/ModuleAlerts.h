// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "AlertSource.h"
#include "InProcessServer.h"

namespace QZ {

// The alerts of the providers in this process, all that the model knows.
class ModuleAlerts : public AlertSource {
public:
    // The server must outlive this object.
    explicit ModuleAlerts(InProcessServer& server);
    ~ModuleAlerts() override;

    // Creates a subscription with every provider of alerts, then enables their indications. Throws
    // Error where there is no provider, else as InProcessServer does.
    void start(Take take) override;

    // Disables the indications, which the providers may answer with last ones, then deletes the
    // subscription.
    void stop() noexcept override;

private:
    class Relay;
    struct Subscribed;

    void _findProviders();
    void _tell(const Subscribed& provider,
               const std::function<void(Pegasus::CIMIndicationProvider&)>& call) noexcept;

    InProcessServer& _server;
    std::unique_ptr<Relay> _relay;
    std::vector<Subscribed> _providers;
};

}  // namespace QZ
