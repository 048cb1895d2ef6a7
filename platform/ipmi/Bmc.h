// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "BmcReaders.h"
#include "BmcValues.h"
#include "FruDecoder.h"
#include "IpmiReplies.h"
#include "SdrDecoder.h"

namespace QZ {

// A field-replaceable unit that the machine's controller knows of, and what its data say.
struct BmcFru {
    FruLocator locator;
    // Its data were read to their end.
    bool isComplete = false;
    FruInventory inventory;
};

// An answer, and from when on it is asked for anew, in Clock's milliseconds.
template <class Value>
struct Kept {
    Value value;
    std::int64_t until = 0;
};

// The machine's management controller. Only commands that read are sent to it. Any thread may ask;
// they ask one after another.
//
// Each call ends within five seconds, the waiting for others included, and then with nothing, or
// with what there is so far. After a reply that never came, the controller counts as absent for
// five seconds. What it said is believed for two.
class Bmc {
public:
    static constexpr int LongestMilliseconds = 5000;
    static constexpr int AbsentMilliseconds = 5000;
    static constexpr int KeptMilliseconds = 2000;

    Bmc() = default;
    Bmc(const Bmc&) = delete;
    Bmc& operator=(const Bmc&) = delete;

    // The one that all of this process share.
    static Bmc& machine();

    // Nothing where there is no controller, or it does not tell.
    std::optional<BmcDeviceId> getDeviceId();
    std::optional<BmcChassisStatus> getChassisStatus();
    std::optional<std::uint64_t> getPowerOnMinutes();
    // IPMI 2.0, table 28-11: 1 chassis control, 3 power button, 4 watchdog, 7 and 8 power restored.
    std::optional<unsigned char> getRestartCause();
    std::optional<BmcWatchdog> getWatchdog();
    // Sixteen bytes as they come: the machine's, and the controller's own. See guidText.
    std::optional<std::string> getSystemGuid();
    std::optional<std::string> getDeviceGuid();
    std::optional<BmcSelInfo> getSelInfo();

    // From that record on, 0 being the first. Never kept.
    BmcSelEntries getSelEntries(std::uint16_t from = 0);

    SdrContents getSdr();

    // The controller's own unit first, then those of the repository in its order, each once. Units
    // without data are left out.
    std::vector<BmcFru> getFrus();

private:
    // Runs a set of commands, unless the controller counts as absent or the others take too long.
    void _run(const std::function<void(IpmiSession& session)>& commands);
    // False where the others took until then.
    bool _takeTurn(std::int64_t deadline);
    void _endTurn();
    void _forgetOtherMachine();
    std::optional<std::string> _ask(IpmiFunction function, unsigned char command,
                                    const std::string& data = {});
    std::optional<std::string> _askIn(IpmiSession& session, const IpmiRequest& request);
    const SdrContents& _readSdr(IpmiSession& session);
    std::vector<BmcFru> _readFrus(IpmiSession& session);

    std::mutex _turns;
    std::condition_variable _ended;
    bool _isTaken = false;

    // Of the thread whose turn it is.
    std::string _machine;
    unsigned _transport = 0;  // its generation
    std::int64_t _absentUntil = 0;
    BmcReadSize _fruSize;
    BmcReadSize _recordSize;
    BmcRecords _records;
    std::map<std::string, Kept<std::optional<std::string>>> _replies;
    std::optional<Kept<SdrContents>> _sdr;
    std::optional<Kept<std::vector<BmcFru>>> _frus;
};

}  // namespace QZ
