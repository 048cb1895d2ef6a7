// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A service-processor library whose processors are what a text file says. See README.md.

#include <algorithm>
#include <cstring>
#include <sstream>

#include "Clock.h"
#include "Description.h"
#include "tavqz/Export.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"

namespace {

// The answer to what the description does not hold.
const int _notThere = 2;

// The values of a field as a file writes them.

void _read(const std::string& text, int& value) {
    value = static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

void _read(const std::string& text, unsigned char& value) {
    value = static_cast<unsigned char>(std::strtol(text.c_str(), nullptr, 10));
}

void _read(const std::string& text, std::string& value) {
    value = text;
}

void _read(const std::string& text, VPD::GREG_CAL& value) {
    std::istringstream(text) >> value.day >> value.month >> value.year;
}

void _read(const std::string& text, VPD::MFG_DATE& value) {
    std::istringstream(text) >> value.first >> value.second;
}

void _read(const std::string& text, VPD::Bytes& value) {
    std::istringstream bytes(text);
    for (unsigned byte = 0; bytes >> std::hex >> byte;) {
        value.push_back(static_cast<unsigned char>(byte));
    }
}

void _read(const std::string& text, VPD::MacAddresses& value) {
    std::istringstream addresses(text);
    for (std::string address; std::getline(addresses, address, ',');) {
        _read(address, value.emplace_back());
    }
}

void _read(const std::string& text, VPD::Interfaces& value) {
    std::istringstream words(text);
    for (VPD::INTERFACE_DESCRIPTOR one{}; words >> one.words[0] >> one.words[1] >> one.words[2];) {
        value.push_back(one);
    }
}

void _setField(VPD& record, const std::string& field, const std::string& text) {
#define SET_FIELD(family, name, id, type)    \
    if (field == #family "_" #name) {        \
        VPD::type value{};                   \
        _read(text, value);                  \
        record.set_##family##_##name(value); \
        return;                              \
    }
    TAVQZ_VPD_FIELDS(SET_FIELD)
#undef SET_FIELD
}

// All of the room but the last place, padded with blanks.
template <std::size_t Size>
void _fill(char (&room)[Size], const std::string& text) {
    std::fill(std::begin(room), std::end(room), ' ');
    std::copy_n(text.begin(), std::min(text.size(), Size - 1), room);
    room[Size - 1] = '\0';
}

template <std::size_t Size>
void _fillWithNul(char (&room)[Size], const std::string& text) {
    std::fill(std::begin(room), std::end(room), '\0');
    std::copy_n(text.begin(), std::min(text.size(), Size), room);
}

// One question: waits as long as the description says, and fails as it says.
class Question {
public:
    Question(int spIndex, const std::string& name)
        : description(Description::load()),
          status(static_cast<int>(description.number(spIndex, "fail." + name, 0))) {
        const long long delay = description.number(spIndex, "delay." + name, 0);
        if (delay > 0) {
            QZ::Clock::current().sleepMilliseconds(static_cast<unsigned>(delay));
        }
    }

    Description description;
    int status;
};

class SimulatedBus final : public cBusComm {
public:
    int getServiceProcessorCount() override {
        return static_cast<int>(Description::load().number(-1, "count", 1));
    }
};

class SimulatedDevice final : public cDeviceLib {
public:
    int getVPDData(int spIndex, int vpdType, int instance, VPD& record) override {
        const Question question(spIndex, "vpd");
        const auto fields = question.description.below(
            spIndex, "vpd." + std::to_string(vpdType) + "." + std::to_string(instance) + ".");
        if (question.status != 0 || fields.empty()) {
            return question.status != 0 ? question.status : _notThere;
        }
        for (const auto& [field, text] : fields) {
            _setField(record, field, text);
        }
        record.setIsVPDValid(fields.count("invalid") == 0);
        return 0;
    }

    int getServiceProcessorType(int& type) override {
        const Question question(-1, "type");
        if (question.status == 0) {
            type = static_cast<int>(question.description.number(-1, "type", 1));
        }
        return question.status;
    }

    int getSystemState(int spIndex, SystemStateRecord& record) override {
        const Question question(spIndex, "state");
        const auto number = [&](const char* key) {
            return question.description.number(spIndex, key, 0);
        };
        record.powerOnHours = static_cast<std::uint64_t>(number("state.hours"));
        record.restartCount = static_cast<std::uint16_t>(number("state.restarts"));
        record.statusInfo = static_cast<std::uint16_t>(number("state.status"));
        record.currentState = static_cast<std::uint32_t>(number("state.current"));
        return question.status;
    }

    int getMachineLevelData(int spIndex, MachineLevelRecord& record) override {
        const Question question(spIndex, "machine");
        _fill(record.uuid, question.description.text(spIndex, "machine.uuid"));
        _fill(record.machineType, question.description.text(spIndex, "machine.type"));
        _fill(record.machineModel, question.description.text(spIndex, "machine.model"));
        _fill(record.serialNumber, question.description.text(spIndex, "machine.serial"));
        return question.status;
    }

    int getWatchdogData(int spIndex, WatchdogRecord& record) override {
        const Question question(spIndex, "watchdog");
        const auto seconds = [&](const char* key) {
            return static_cast<std::int32_t>(question.description.number(spIndex, key, -1));
        };
        record = {seconds("watchdog.post"), seconds("watchdog.loader"), seconds("watchdog.os"),
                  seconds("watchdog.power")};
        return question.status;
    }

    int getPostBiosVersion(int spIndex, PostBiosRecord& record) override {
        const Question question(spIndex, "postbios");
        _fillWithNul(record.buildLevel, question.description.text(spIndex, "postbios.level"));
        _fillWithNul(record.buildDate, question.description.text(spIndex, "postbios.date"));
        record.version =
            static_cast<std::int32_t>(question.description.number(spIndex, "postbios.version", 0));
        return question.status;
    }
};

SimulatedBus _bus;
SimulatedDevice _device;

}  // namespace

extern "C" {

TAVQZ_EXPORT int getSharedCommDevice(cBusComm** bus) {
    *bus = &_bus;
    return 0;
}

TAVQZ_EXPORT int getSharedLibDevice(cBusComm*, cDeviceLib** device) {
    *device = &_device;
    return 0;
}

TAVQZ_EXPORT void initSharedInterface() {}

TAVQZ_EXPORT int interface_Comm_Release() {
    return 0;
}

TAVQZ_EXPORT int interface_Lib_Release() {
    return 0;
}

TAVQZ_EXPORT int interface_close() {
    return 0;
}
}
