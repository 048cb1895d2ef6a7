// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <optional>
#include <set>

#include "BmcReaders.h"
#include "IpmiBytes.h"

namespace QZ {

namespace {

constexpr unsigned char GetRepositoryInfo = 0x20;
constexpr unsigned char ReserveRepository = 0x22;
constexpr unsigned char GetRecord = 0x23;

constexpr std::uint16_t LastRecord = 0xFFFF;
constexpr unsigned WholeRecord = 0xFF;
constexpr std::size_t HeaderLength = 5;
constexpr unsigned MostReservations = 5;

IpmiRequest storage(unsigned char command, const std::string& data = {}) {
    IpmiRequest request;
    request.function = IpmiFunction::Storage;
    request.command = command;
    request.data = data;
    return request;
}

class Walk {
public:
    Walk(IpmiSession& session, BmcReadSize& size, BmcRecords& records)
        : _session(session), _size(size), _records(records) {}

    void run() {
        while (!_records.isComplete) {
            // A controller that names a record twice would lead round in circles.
            if (!_seen.insert(_records.next).second || !_readRecord())
                return;
        }
    }

private:
    bool _reserve() {
        if (_reservations++ >= MostReservations)
            return false;
        const std::optional<IpmiReply> reply = _session.ask(storage(ReserveRepository));
        if (!reply)
            return false;
        // One that knows no reservations wants none.
        _reservation = reply->completion == IpmiNormal ? reply->data.substr(0, 2) : std::string();
        _reservation.resize(2);
        return true;
    }

    // The bytes of the record from its offset on, and the record behind it in front of them.
    std::optional<IpmiReply> _ask(std::size_t offset, unsigned count) {
        std::string data = _reservation;
        data += static_cast<char>(_records.next & 0xFFU);
        data += static_cast<char>(_records.next >> 8U);
        data += static_cast<char>(offset);
        data += static_cast<char>(count);
        return _session.ask(storage(GetRecord, data));
    }

    bool _readRecord() {
        for (;;) {
            if (_reservation.empty() && !_reserve())
                return false;
            std::string record;
            std::uint16_t next = LastRecord;
            const IpmiCompletion completion = _readBytes(record, next);
            if (completion == IpmiNormal) {
                _records.records.push_back(record);
                _records.next = next;
                _records.isComplete = next == LastRecord;
                return true;
            }
            if (completion != IpmiReservationCancelled)
                return false;
            _reservation.clear();
        }
    }

    // The whole of it at once where the controller can; what is missing then, piece by piece.
    IpmiCompletion _readBytes(std::string& record, std::uint16_t& next) {
        unsigned count = _mayReadWhole ? WholeRecord : static_cast<unsigned>(HeaderLength);
        for (;;) {
            const std::optional<IpmiReply> reply = _ask(record.size(), count);
            if (!reply)
                return IpmiUnspecified;
            if (reply->completion == IpmiReservationCancelled)
                return IpmiReservationCancelled;
            if (reply->completion == IpmiNormal && reply->data.size() > 2) {
                next = wordAt(reply->data, 0);
                record += reply->data.substr(2);
            } else if (count == WholeRecord) {
                _mayReadWhole = false;
            } else if (count <= HeaderLength || !_size.shrinkFor(*reply)) {
                return IpmiUnspecified;
            }
            const std::size_t length =
                record.size() < HeaderLength ? HeaderLength : HeaderLength + byteAt(record, 4);
            if (record.size() >= length)
                return IpmiNormal;
            count =
                static_cast<unsigned>(std::min<std::size_t>(_size.bytes(), length - record.size()));
        }
    }

    IpmiSession& _session;
    BmcReadSize& _size;
    BmcRecords& _records;
    std::set<std::uint16_t> _seen;
    std::string _reservation;
    unsigned _reservations = 0;
    bool _mayReadWhole = true;
};

// The two times of change, of which a controller without a clock tells nothing.
bool tellsChanges(const std::string& info) {
    const std::string times = info.size() >= 13 ? info.substr(5, 8) : std::string();
    return times.find_first_not_of('\0') != std::string::npos &&
           times.find_first_not_of('\xFF') != std::string::npos;
}

}  // namespace

void readSdr(IpmiSession& session, BmcReadSize& size, BmcRecords& records) {
    const std::optional<IpmiReply> info = session.ask(storage(GetRepositoryInfo));
    if (!info)
        return;
    if (info->completion != IpmiNormal) {
        records = {};
        return;
    }
    const bool isStarted = !records.records.empty() && records.stamp == info->data;
    // A walk that was cut off goes on even where nothing tells that it may: the next one begins
    // anew.
    if (!isStarted || (records.isComplete && !tellsChanges(info->data)))
        records = {};
    records.stamp = info->data;
    Walk(session, size, records).run();
}

}  // namespace QZ
