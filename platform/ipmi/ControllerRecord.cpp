// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ControllerRecord.h"

#include <filesystem>
#include <system_error>

#include "Bmc.h"
#include "IpmiReplies.h"
#include "IpmiTransport.h"
#include "MachinePaths.h"

namespace QZ {

namespace {

// Passes everything on, and writes it down.
class Recorder final : public IpmiTransport {
public:
    explicit Recorder(IpmiTransport& transport) : _transport(transport) {}

    std::unique_ptr<IpmiConnection> open(int milliseconds) override {
        auto connection = _transport.open(milliseconds);
        return connection ? std::make_unique<Connection>(*this, std::move(connection)) : nullptr;
    }

    const IpmiReplies& replies() const { return _replies; }
    bool hasTimedOut() const { return _hasTimedOut; }

private:
    class Connection final : public IpmiConnection {
    public:
        Connection(Recorder& recorder, std::unique_ptr<IpmiConnection> connection)
            : _recorder(recorder), _connection(std::move(connection)) {}

        Outcome send(const IpmiRequest& request, IpmiReply& reply, int milliseconds) override {
            const Outcome outcome = _connection->send(request, reply, milliseconds);
            if (outcome == Outcome::Replied)
                _recorder._replies.add(request, reply);
            _recorder._hasTimedOut = _recorder._hasTimedOut || outcome == Outcome::TimedOut;
            return outcome;
        }

    private:
        Recorder& _recorder;
        std::unique_ptr<IpmiConnection> _connection;
    };

    IpmiTransport& _transport;
    IpmiReplies _replies;
    bool _hasTimedOut = false;
};

void askEverything(Bmc& bmc) {
    static_cast<void>(bmc.getDeviceId());
    static_cast<void>(bmc.getChassisStatus());
    static_cast<void>(bmc.getPowerOnMinutes());
    static_cast<void>(bmc.getRestartCause());
    static_cast<void>(bmc.getWatchdog());
    static_cast<void>(bmc.getSystemGuid());
    static_cast<void>(bmc.getDeviceGuid());
    static_cast<void>(bmc.getFrus());
    static_cast<void>(bmc.getSelInfo());
    static_cast<void>(bmc.getSelEntries());
}

}  // namespace

void recordController(MachineRecord& record) {
    Recorder recorder(IpmiTransport::current());
    {
        const IpmiTransportReplacement replacement(recorder);
        Bmc bmc;
        askEverything(bmc);
    }
    const std::string device = MachinePaths::managementController();
    const std::string text = recorder.replies().text();
    std::error_code error;
    if (!text.empty())
        record.files[MachinePaths::managementControllerReplies().substr(
            MachinePaths::root().size() + 1)] = text;
    else if (std::filesystem::exists(device, error) && !recorder.hasTimedOut())
        record.problems.push_back("Cannot open " + device + ".");
    if (recorder.hasTimedOut())
        record.problems.push_back("The controller behind " + device + " stopped answering.");
}

}  // namespace QZ
