// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A service-processor library whose processors are what a text file says. See README.md.

#include <algorithm>
#include <optional>

#include "Clock.h"
#include "Description.h"
#include "FieldText.h"
#include "tavqz/Export.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"

namespace {

// The answer to what the description does not hold.
const int _notThere = 2;

void _setField(VPD& record, const std::string& field, const std::string& text) {
#define SET_FIELD(family, name, id, type)    \
    if (field == #family "_" #name) {        \
        VPD::type value{};                   \
        readField(text, value);              \
        record.set_##family##_##name(value); \
        return;                              \
    }
    TAVQZ_VPD_FIELDS(SET_FIELD)
#undef SET_FIELD
}

// Shorter texts are followed by the padding, longer ones are none: the description's are read so.
template <std::size_t Size>
void _fill(char (&room)[Size], const std::string& text, char padding) {
    std::fill(std::begin(room), std::end(room), padding);
    std::copy_n(text.begin(), std::min(text.size(), Size), room);
}

// One question: waits as long as the description says, and fails as it says.
class Question {
public:
    Question(int spIndex, const std::string& name) : _spIndex(spIndex) {
        const std::optional<Description> found = loadDescription();
        if (!found) {
            return;
        }
        description = *found;
        status = static_cast<int>(number("fail." + name, 0));
        const long long delay = number("delay." + name, 0);
        if (delay > 0) {
            QZ::Clock::current().sleepMilliseconds(static_cast<unsigned>(delay));
        }
    }

    std::string text(const std::string& key) const { return description.text(_spIndex, key); }
    long long number(const std::string& key, long long missing) const {
        return description.number(_spIndex, key, missing);
    }

    Description description;
    int status = _notThere;

private:
    int _spIndex;
};

class SimulatedBus final : public cBusComm {
public:
    int getServiceProcessorCount() override {
        const std::optional<Description> found = loadDescription();
        return found ? static_cast<int>(found->number(-1, "count", 1)) : 0;
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
            type = static_cast<int>(question.number("type", 1));
        }
        return question.status;
    }

    int getSystemState(int spIndex, SystemStateRecord& record) override {
        const Question question(spIndex, "state");
        const auto number = [&](const char* key) { return question.number(key, 0); };
        record.powerOnHours = static_cast<std::uint64_t>(number("state.hours"));
        record.restartCount = static_cast<std::uint16_t>(number("state.restarts"));
        record.statusInfo = static_cast<std::uint16_t>(number("state.status"));
        record.currentState = static_cast<std::uint32_t>(number("state.current"));
        return question.status;
    }

    int getMachineLevelData(int spIndex, MachineLevelRecord& record) override {
        const Question question(spIndex, "machine");
        _fill(record.uuid, question.text("machine.uuid"), ' ');
        _fill(record.machineType, question.text("machine.type"), ' ');
        _fill(record.machineModel, question.text("machine.model"), ' ');
        _fill(record.serialNumber, question.text("machine.serial"), ' ');
        return question.status;
    }

    int getWatchdogData(int spIndex, WatchdogRecord& record) override {
        const Question question(spIndex, "watchdog");
        const auto seconds = [&](const char* key) {
            return static_cast<std::int32_t>(question.number(key, -1));
        };
        record = {seconds("watchdog.post"), seconds("watchdog.loader"), seconds("watchdog.os"),
                  seconds("watchdog.power")};
        return question.status;
    }

    int getPostBiosVersion(int spIndex, PostBiosRecord& record) override {
        const Question question(spIndex, "postbios");
        _fill(record.buildLevel, question.text("postbios.level"), '\0');
        _fill(record.buildDate, question.text("postbios.date"), '\0');
        record.version = static_cast<std::int32_t>(question.number("postbios.version", 0));
        return question.status;
    }
};

SimulatedBus _bus;
SimulatedDevice _device;

}  // namespace

extern "C" {

TAVQZ_EXPORT int getSharedCommDevice(cBusComm** bus) {
    if (!loadDescription()) {
        return _notThere;
    }
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
