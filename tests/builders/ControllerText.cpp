// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ControllerText.h"

#include <vector>

#include "IpmiBytes.h"
#include "IpmiReplies.h"
#include "SdrBuilder.h"
#include "SelBuilder.h"

namespace {

// 20 November 2026, 08:00:00 UTC.
constexpr std::uint32_t _morning = 1795161600;

std::string _word(unsigned value) {
    return {static_cast<char>(value & 0xFFU), static_cast<char>(value >> 8U)};
}

void _add(QZ::IpmiReplies& replies, QZ::IpmiFunction function, unsigned char command,
          const std::string& data, const std::string& reply) {
    QZ::IpmiRequest request;
    request.function = function;
    request.command = command;
    request.data = data;
    replies.add(request, {QZ::IpmiNormal, reply});
}

unsigned _idBehind(const std::vector<std::string>& records, std::size_t index) {
    return index + 1 < records.size() ? QZ::wordAt(records[index + 1], 0) : 0xFFFF;
}

// A repository that does not change, of whole records.
void _addSensors(QZ::IpmiReplies& replies, const std::vector<std::string>& records) {
    const std::string never(4, '\0');
    const std::string reservation = _word(1);
    _add(replies, QZ::IpmiFunction::Storage, 0x20, "",
         '\x51' + _word(static_cast<unsigned>(records.size())) + _word(1024) + never + never +
             '\x02');
    _add(replies, QZ::IpmiFunction::Storage, 0x22, "", reservation);
    for (std::size_t i = 0; i < records.size(); ++i) {
        const unsigned id = i == 0 ? 0 : QZ::wordAt(records[i], 0);
        _add(replies, QZ::IpmiFunction::Storage, 0x23, reservation + _word(id) + '\0' + '\xFF',
             _word(_idBehind(records, i)) + records[i]);
    }
}

void _addLog(QZ::IpmiReplies& replies, const std::vector<std::string>& records, unsigned told) {
    const std::string times(8, '\0');
    _add(replies, QZ::IpmiFunction::Storage, 0x40, "",
         '\x51' + _word(told) + _word(4096) + times + '\x02');
    for (std::size_t i = 0; i < records.size(); ++i) {
        const unsigned id = i == 0 ? 0 : QZ::wordAt(records[i], 0);
        _add(replies, QZ::IpmiFunction::Storage, 0x43, _word(0) + _word(id) + '\0' + '\xFF',
             _word(_idBehind(records, i)) + records[i]);
    }
}

QZ::IpmiReplies _controller() {
    QZ::IpmiReplies replies;
    // IPMI 2.0, with sensors and an event log, without units.
    _add(replies, QZ::IpmiFunction::Application, 0x01, "",
         std::string("\x20\x01\x02\x50\x02\x06\x39\x30\x00\x01\x00", 11));
    return replies;
}

std::string _sensor(unsigned record, unsigned kind, unsigned type, unsigned number,
                    const std::string& name) {
    QZ::SensorRecord sensor;
    sensor.recordId = static_cast<std::uint16_t>(record);
    sensor.owner = QZ::BmcAddress;
    sensor.number = static_cast<unsigned char>(number);
    sensor.sensorType = static_cast<unsigned char>(type);
    sensor.eventReadingType = type == 1 ? 0x01 : 0x6F;
    sensor.name = name;
    return sensorRecord(kind, sensor);
}

}  // namespace

std::string eventfulController() {
    QZ::IpmiReplies replies = _controller();
    _addSensors(replies,
                {_sensor(1, 1, 0x01, 0x30, "CPU 1 Temp"), _sensor(2, 2, 0x08, 0x41, "PSU 1"),
                 _sensor(4, 3, 0x10, 0x07, "Event Log")});
    constexpr unsigned bios = 0x33;
    const std::vector<std::string> log = {
        selRecord({1, 30, 0x10, 0x07, 0x6F, 2}),
        selRecord({2, _morning, 0x01, 0x30, 0x01, 9}),
        selRecord({3, _morning + 90, 0x01, 0x30, 0x01, 9, true}),
        selRecord({5, _morning + 3600, 0x08, 0x41, 0x6F, 3}),
        selRecord({6, _morning + 3601, 0x09, 0x42, 0x6F, 4}),
        selRecord({7, _morning + 7200, 0x0C, 0x30, 0x6F, 0, false, bios}),
        selRecord({8, _morning + 7300, 0x08, 0x41, 0x6F, 0, false, 0x0120}),
        selRecord({9, _morning + 7400, 0x15, 0x60, 0x03, 1}),
        selRecord({10, _morning + 7500, 0x25, 0x61, 0x6F, 0}),
        selRecord({11, _morning + 7600, 0xC5, 0x62, 0x70, 1}),
        selRecord({12, 0xFFFFFFFF, 0x23, 0x63, 0x6F, 8}),
        otherSelRecord(13, 0xC0, std::string("\x00\x2A\x00\x6B\x39\x30\x00 maker", 13)),
        otherSelRecord(14, 0xFB, "thirteen bytes"),
        otherSelRecord(0x1234, 0x05, "unknown"),
    };
    _addLog(replies, log, static_cast<unsigned>(log.size()));
    return replies.text();
}

std::string hostileController() {
    QZ::IpmiReplies replies = _controller();
    _addSensors(replies, {_sensor(1, 1, 0x01, 0x30, "\x1B[2J<&>\","),
                          _sensor(2, 2, 0x08, 0x41, std::string("=1+1\0\xFF", 6))});
    _addLog(replies,
            {selRecord({1, _morning, 0x01, 0x30, 0x01, 9}),
             selRecord({2, _morning, 0x08, 0x41, 0x6F, 1})},
            3);
    return replies.text();
}
