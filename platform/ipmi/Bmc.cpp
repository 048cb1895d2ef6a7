// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Bmc.h"

#include <algorithm>

#include "Clock.h"
#include "FruUnits.h"
#include "IpmiBytes.h"
#include "MachinePaths.h"

namespace QZ {

namespace {

enum Command : unsigned char {
    GetDeviceId = 0x01,
    GetDeviceGuid = 0x08,
    GetWatchdog = 0x25,
    GetSystemGuid = 0x37,
    GetChassisStatus = 0x01,
    GetRestartCause = 0x07,
    GetPowerOnHours = 0x0F,
    GetSelInfo = 0x40,
};

constexpr std::size_t GuidLength = 16;

template <class Value>
std::optional<Value> decoded(const std::optional<std::string>& data,
                             std::optional<Value> (*decode)(const std::string&)) {
    return data ? decode(*data) : std::nullopt;
}

std::optional<std::string> wholeGuid(const std::optional<std::string>& data) {
    return data && data->size() == GuidLength ? data : std::nullopt;
}

}  // namespace

Bmc& Bmc::machine() {
    static Bmc bmc;
    return bmc;
}

std::optional<BmcDeviceId> Bmc::getDeviceId() {
    return decoded(_ask(IpmiFunction::Application, GetDeviceId), decodeDeviceId);
}

std::optional<BmcChassisStatus> Bmc::getChassisStatus() {
    return decoded(_ask(IpmiFunction::Chassis, GetChassisStatus), decodeChassisStatus);
}

std::optional<std::uint64_t> Bmc::getPowerOnMinutes() {
    return decoded(_ask(IpmiFunction::Chassis, GetPowerOnHours), decodePowerOnMinutes);
}

std::optional<unsigned char> Bmc::getRestartCause() {
    const std::optional<std::string> data = _ask(IpmiFunction::Chassis, GetRestartCause);
    if (!data || data->empty())
        return std::nullopt;
    return static_cast<unsigned char>(byteAt(*data, 0) & 0xFU);
}

std::optional<BmcWatchdog> Bmc::getWatchdog() {
    return decoded(_ask(IpmiFunction::Application, GetWatchdog), decodeWatchdog);
}

std::optional<std::string> Bmc::getSystemGuid() {
    return wholeGuid(_ask(IpmiFunction::Application, GetSystemGuid));
}

std::optional<std::string> Bmc::getDeviceGuid() {
    return wholeGuid(_ask(IpmiFunction::Application, GetDeviceGuid));
}

std::optional<BmcSelInfo> Bmc::getSelInfo() {
    return decoded(_ask(IpmiFunction::Storage, GetSelInfo), decodeSelInfo);
}

BmcSelEntries Bmc::getSelEntries(std::uint16_t from) {
    BmcSelEntries entries;
    entries.next = from;
    _run([&](IpmiSession& session) { entries = readSel(session, from); });
    return entries;
}

SdrContents Bmc::getSdr() {
    SdrContents contents;
    _run([&](IpmiSession& session) { contents = _readSdr(session); });
    return contents;
}

std::vector<BmcFru> Bmc::getFrus() {
    std::vector<BmcFru> frus;
    _run([&](IpmiSession& session) { frus = _readFrus(session); });
    return frus;
}

void Bmc::_run(const std::function<void(IpmiSession& session)>& commands) {
    const std::int64_t deadline = Clock::current().milliseconds() + LongestMilliseconds;
    if (!_takeTurn(deadline))
        return;
    struct Turn {
        Bmc& bmc;
        ~Turn() { bmc._endTurn(); }
    } const turn{*this};
    _forgetOtherMachine();
    if (Clock::current().milliseconds() < _absentUntil)
        return;
    IpmiSession session(IpmiTransport::current(), deadline);
    commands(session);
    if (session.hasTimedOut())
        _absentUntil = Clock::current().milliseconds() + AbsentMilliseconds;
}

bool Bmc::_takeTurn(std::int64_t deadline) {
    std::unique_lock<std::mutex> lock(_turns);
    while (_isTaken) {
        const std::int64_t left = deadline - Clock::current().milliseconds();
        if (left <= 0)
            return false;
        Clock::current().wait(_ended, lock, static_cast<unsigned>(left));
    }
    _isTaken = true;
    return true;
}

void Bmc::_endTurn() {
    {
        const std::lock_guard<std::mutex> lock(_turns);
        _isTaken = false;
    }
    _ended.notify_one();
}

// What is kept was said by one controller, reached in one way.
void Bmc::_forgetOtherMachine() {
    const unsigned transport = IpmiTransport::generation();
    std::string machine = MachinePaths::root();
    if (transport == _transport && machine == _machine)
        return;
    _transport = transport;
    _machine = std::move(machine);
    _absentUntil = 0;
    _fruSize = {};
    _recordSize = {};
    _records = {};
    _replies.clear();
    _sdr.reset();
    _frus.reset();
}

std::optional<std::string> Bmc::_ask(IpmiFunction function, unsigned char command,
                                     const std::string& data) {
    std::optional<std::string> reply;
    _run([&](IpmiSession& session) {
        IpmiRequest request;
        request.function = function;
        request.command = command;
        request.data = data;
        reply = _askIn(session, request);
    });
    return reply;
}

std::optional<std::string> Bmc::_askIn(IpmiSession& session, const IpmiRequest& request) {
    const std::int64_t now = Clock::current().milliseconds();
    const std::string text = IpmiReplies::requestText(request);
    const auto kept = _replies.find(text);
    if (kept != _replies.end() && now < kept->second.until)
        return kept->second.value;
    std::optional<std::string> data;
    if (const std::optional<IpmiReply> reply = session.ask(request)) {
        if (reply->completion == IpmiNormal)
            data = reply->data;
        _replies[text] = {data, now + KeptMilliseconds};
    }
    return data;
}

const SdrContents& Bmc::_readSdr(IpmiSession& session) {
    const std::int64_t now = Clock::current().milliseconds();
    const bool isKept = _sdr.has_value() && now < _sdr.value().until;
    if (!isKept) {
        readSdr(session, _recordSize, _records);
        // One that was cut off goes on with the next call.
        const std::int64_t until = session.isOver() ? now : now + KeptMilliseconds;
        _sdr.emplace(Kept<SdrContents>{decodeSdr(_records.records), until});
    }
    return _sdr.value().value;
}

std::vector<BmcFru> Bmc::_readFrus(IpmiSession& session) {
    const std::int64_t now = Clock::current().milliseconds();
    if (_frus && now < _frus->until)
        return _frus->value;
    IpmiRequest deviceId;
    deviceId.command = GetDeviceId;
    const auto id = decoded(_askIn(session, deviceId), decodeDeviceId);
    std::vector<BmcFru> frus;
    for (const FruLocator& unit : listFruUnits(id && id->hasFruData, _readSdr(session))) {
        const FruBytes data = readFru(session, _fruSize, unit);
        if (data.isPresent)
            frus.push_back({unit, data.isComplete, decodeFru(data.bytes)});
    }
    if (!session.isOver())
        _frus = {frus, now + KeptMilliseconds};
    return frus;
}

}  // namespace QZ
