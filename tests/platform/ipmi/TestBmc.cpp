// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TestBmc.h"

#include <algorithm>

#include "Clock.h"
#include "IpmiBytes.h"

using QZ::byteAt;
using QZ::IpmiFunction;
using QZ::IpmiReply;
using QZ::IpmiRequest;
using QZ::wordAt;
using Outcome = QZ::IpmiConnection::Outcome;

namespace {

constexpr unsigned LastRecord = 0xFFFF;
constexpr unsigned WholeRecord = 0xFF;

std::string littleEndian(unsigned value, unsigned bytes) {
    std::string text;
    for (unsigned i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> 8U * i & 0xFFU);
    return text;
}

bool isCommand(const IpmiRequest& request, IpmiFunction function, unsigned command) {
    return request.function == function && request.command == command;
}

}  // namespace

class TestBmcConnection final : public QZ::IpmiConnection {
public:
    explicit TestBmcConnection(TestBmc& bmc) : _bmc(bmc), _lock(bmc._open) {}

    Outcome send(const IpmiRequest& request, IpmiReply& reply, int milliseconds) override {
        return _bmc._send(request, reply, milliseconds);
    }

private:
    TestBmc& _bmc;
    std::lock_guard<std::mutex> _lock;
};

std::unique_ptr<QZ::IpmiConnection> TestBmc::open(int) {
    if (_isGone)
        return nullptr;
    auto connection = std::make_unique<TestBmcConnection>(*this);
    ++_connections;
    return connection;
}

TestBmc& TestBmc::reply(const std::string& request, const std::string& reply) {
    _replies = QZ::IpmiReplies::parse(_replies.text() + request + " = " + reply);
    return *this;
}

TestBmc& TestBmc::fru(unsigned id, const std::string& bytes, unsigned address) {
    _frus[{address, id}] = bytes;
    return *this;
}

TestBmc& TestBmc::records(const std::vector<std::string>& records) {
    _records = records;
    return *this;
}

TestBmc& TestBmc::event(const std::string& record) {
    _events.push_back(record);
    return *this;
}

TestBmc& TestBmc::trouble(Trouble trouble) {
    _trouble = std::move(trouble);
    return *this;
}

void TestBmc::allowReads(unsigned bytes, unsigned char completion) {
    _longestRead = bytes;
    _readCompletion = completion;
}

std::size_t TestBmc::countAsked(const std::string& start) const {
    return static_cast<std::size_t>(
        std::count_if(_asked.begin(), _asked.end(),
                      [&start](const std::string& text) { return text.rfind(start, 0) == 0; }));
}

Outcome TestBmc::_send(const IpmiRequest& request, IpmiReply& reply, int milliseconds) {
    _asked.push_back(QZ::IpmiReplies::requestText(request));
    if (_isHanging || static_cast<int>(_milliseconds) > milliseconds ||
        _replies.hasNoReply(request)) {
        QZ::Clock::current().sleepMilliseconds(static_cast<unsigned>(milliseconds));
        return Outcome::TimedOut;
    }
    QZ::Clock::current().sleepMilliseconds(_milliseconds);
    if (!_trouble || !_trouble(request, reply))
        reply = _answer(request);
    return Outcome::Replied;
}

IpmiReply TestBmc::_answer(const IpmiRequest& request) {
    if (const auto known = _replies.find(request))
        return *known;
    if (isCommand(request, IpmiFunction::Storage, 0x10)) {
        const auto found = _frus.find({request.address, byteAt(request.data, 0)});
        if (found == _frus.end())
            return {QZ::IpmiNotPresent, {}};
        return {QZ::IpmiNormal,
                littleEndian(static_cast<unsigned>(found->second.size()), 2) + '\0'};
    }
    if (isCommand(request, IpmiFunction::Storage, 0x11))
        return _readFru(request);
    if (isCommand(request, IpmiFunction::Storage, 0x20))
        return {QZ::IpmiNormal, _recordInfo()};
    if (isCommand(request, IpmiFunction::Storage, 0x22))
        return {QZ::IpmiNormal, littleEndian(++_reservation, 2)};
    if (isCommand(request, IpmiFunction::Storage, 0x23))
        return _readRecord(request);
    if (isCommand(request, IpmiFunction::Storage, 0x43))
        return _readEvent(request);
    return {QZ::IpmiInvalidCommand, {}};
}

IpmiReply TestBmc::_readFru(const IpmiRequest& request) {
    const auto found = _frus.find({request.address, byteAt(request.data, 0)});
    const unsigned offset = wordAt(request.data, 1);
    const unsigned count = byteAt(request.data, 3);
    if (found == _frus.end() || offset >= found->second.size())
        return {QZ::IpmiNotPresent, {}};
    if (count > _longestRead)
        return {_readCompletion, {}};
    const std::string bytes = found->second.substr(offset, count);
    return {QZ::IpmiNormal, static_cast<char>(bytes.size()) + bytes};
}

std::string TestBmc::_recordInfo() const {
    return '\x51' + littleEndian(static_cast<unsigned>(_records.size()), 2) +
           littleEndian(1024, 2) + littleEndian(_recordsChanged, 4) + littleEndian(0, 4) + '\x02';
}

IpmiReply TestBmc::_readRecord(const IpmiRequest& request) {
    const unsigned id = wordAt(request.data, 2);
    const unsigned offset = byteAt(request.data, 4);
    const unsigned count = byteAt(request.data, 5);
    if (wordAt(request.data, 0) != _reservation && (wordAt(request.data, 0) != 0 || offset != 0))
        return {QZ::IpmiReservationCancelled, {}};
    const auto found = std::find_if(
        _records.begin(), _records.end(),
        [id](const std::string& record) { return id == 0 || wordAt(record, 0) == id; });
    if (found == _records.end())
        return {QZ::IpmiNotPresent, {}};
    const std::string bytes = found->substr(std::min<std::size_t>(offset, found->size()),
                                            count == WholeRecord ? std::string::npos : count);
    if (bytes.size() > _longestRead)
        return {_readCompletion, {}};
    const unsigned next = found + 1 == _records.end() ? LastRecord : wordAt(*(found + 1), 0);
    return {QZ::IpmiNormal, littleEndian(next, 2) + bytes};
}

IpmiReply TestBmc::_readEvent(const IpmiRequest& request) {
    const unsigned id = wordAt(request.data, 2);
    const auto found = std::find_if(
        _events.begin(), _events.end(),
        [id](const std::string& record) { return id == 0 || wordAt(record, 0) == id; });
    if (found == _events.end())
        return {QZ::IpmiNotPresent, {}};
    const unsigned next = found + 1 == _events.end() ? LastRecord : wordAt(*(found + 1), 0);
    return {QZ::IpmiNormal, littleEndian(next, 2) + *found};
}
