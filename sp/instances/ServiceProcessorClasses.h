// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/String.h>

#include <string>

#include "RecordClasses.h"
#include "RecordInstance.h"
#include "tavqz/ServiceProcessorRecords.h"

namespace QZ {

// What a builder gathers for one instance, and the tables by which that becomes a CIM instance.

// Of every class.
struct SpInstance {
    int spIndex = 0;
    Pegasus::String className;
};

struct VigilPresent : SpInstance {};

struct VigilWatchdog : SpInstance {
    std::wstring deviceId;
    Pegasus::Uint32 timeout = 0;  // seconds
    std::wstring stage;
};

struct VigilSystemState : SpInstance {
    std::wstring deviceId;
    SystemStateRecord state{};
    std::wstring stateText;
    std::wstring family;
};

// Of the classes of vital product data.
struct VigilVpd : SpInstance {
    int number = 1;  // among the instances of the same call
    int deviceType = 0;
    std::wstring description;
};

struct VigilComponentVpd : VigilVpd {
    std::string fruNumber;
    std::string manufacturerId;
    std::string modelNumber;
};

struct VigilFirmwareVpd : VigilVpd {
    std::wstring kind;
    std::string fileName;
    std::string buildId;
    std::string revision;
    std::string releaseDate;
};

struct VigilMachineLevelVpd : VigilVpd {
    std::string uuid;
    std::string machineType;
    std::string machineModel;
    std::string serialNumber;
};

struct VigilPostBiosVpd : VigilVpd {
    std::string version;
    std::string buildDate;
    std::string buildLevel;
};

extern const RecordClass<VigilPresent> vigilPresentClass;
extern const RecordClass<VigilWatchdog> vigilWatchdogClass;
extern const RecordClass<VigilSystemState> vigilSystemStateClass;
extern const RecordClass<VigilComponentVpd> vigilComponentVpdClass;
extern const RecordClass<VigilFirmwareVpd> vigilFirmwareVpdClass;
extern const RecordClass<VigilMachineLevelVpd> vigilMachineLevelVpdClass;
extern const RecordClass<VigilPostBiosVpd> vigilPostBiosVpdClass;

// The same properties as vigilComponentVpdClass's, in the order in which they are sent of FRUs.
extern const RecordClass<VigilComponentVpd> ipmiComponentVpdClass;

// The instance, whose path has a class and keys, and no host or namespace.
template <class Record>
Pegasus::CIMInstance buildSpInstance(const RecordClass<Record>& recordClass, const Record& record) {
    return InstanceBuilder<Record>(recordClass)
        .build(record, Pegasus::CIMObjectPath(Pegasus::String(), Pegasus::CIMNamespaceName(),
                                              Pegasus::CIMName(record.className)));
}

}  // namespace QZ
