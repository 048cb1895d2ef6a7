// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "IpmiReplies.h"
#include "IpmiTransport.h"

// A management controller that holds FRU data, sensor data records and events, and can be made to
// behave badly. It takes the machine's place for as long as it lives. Commands that it does not
// know are invalid. Asked by one connection at a time; set up before that.
class TestBmc final : public QZ::IpmiTransport {
public:
    TestBmc() : _replacement(*this) {}

    // The reply to a command, both as in recorded replies.
    TestBmc& reply(const std::string& request, const std::string& reply);

    // Units and records. An address other than the BMC's is that of a controller behind it.
    TestBmc& fru(unsigned id, const std::string& bytes, unsigned address = QZ::BmcAddress);
    TestBmc& records(const std::vector<std::string>& records);
    TestBmc& event(const std::string& record);

    // What is asked first, before a command is looked at; true where it has replied.
    using Trouble = std::function<bool(const QZ::IpmiRequest&, QZ::IpmiReply&)>;
    TestBmc& trouble(Trouble trouble);

    // No reply comes any more; or each takes so long.
    void hang() { _isHanging = true; }
    void wake() { _isHanging = false; }
    void takeMilliseconds(unsigned milliseconds) { _milliseconds = milliseconds; }
    // The repository says that it was changed then.
    void touchRecords(unsigned when) { _recordsChanged = when; }
    void allowReads(unsigned bytes, unsigned char completion = QZ::IpmiCannotReturnLength);

    // The next connections are refused, as those of a machine without a controller.
    void vanish() { _isGone = true; }

    // What was asked, as in recorded replies.
    const std::vector<std::string>& asked() const { return _asked; }
    void forgetAsked() { _asked.clear(); }
    std::size_t countAsked(const std::string& start) const;
    unsigned connections() const { return _connections; }

    std::unique_ptr<QZ::IpmiConnection> open(int milliseconds) override;

private:
    friend class TestBmcConnection;
    QZ::IpmiConnection::Outcome _send(const QZ::IpmiRequest& request, QZ::IpmiReply& reply,
                                      int milliseconds);
    QZ::IpmiReply _answer(const QZ::IpmiRequest& request);
    QZ::IpmiReply _readFru(const QZ::IpmiRequest& request);
    QZ::IpmiReply _readRecord(const QZ::IpmiRequest& request);
    QZ::IpmiReply _readEvent(const QZ::IpmiRequest& request);
    std::string _recordInfo() const;

    QZ::IpmiReplies _replies;
    std::map<std::pair<unsigned, unsigned>, std::string> _frus;
    std::vector<std::string> _records;
    std::vector<std::string> _events;
    Trouble _trouble;
    unsigned _recordsChanged = 1000;
    unsigned _reservation = 0;
    unsigned _longestRead = 255;
    unsigned char _readCompletion = QZ::IpmiCannotReturnLength;
    unsigned _milliseconds = 0;
    bool _isHanging = false;
    bool _isGone = false;
    unsigned _connections = 0;
    std::vector<std::string> _asked;
    std::mutex _open;
    QZ::IpmiTransportReplacement _replacement;
};
