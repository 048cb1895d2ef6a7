// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tavqz/Export.h"
#include "tavqz/ServiceProcessorRecords.h"
#include "tavqz/VPD.h"

// What a service processor can be asked. A service-processor library derives from this class and
// hands its object out through getSharedLibDevice. It keeps the object: the module never deletes
// it, and uses it until it has called interface_Lib_Release. Several request threads may ask at
// once. Each query returns 0 when it filled the record, and must not throw. spIndex counts
// service processors from 0. The order of the queries is the interface: it never changes.
class TAVQZ_EXPORT cDeviceLib {
public:
    cDeviceLib(const cDeviceLib&) = delete;
    cDeviceLib& operator=(const cDeviceLib&) = delete;

    // Vital product data of a kind (VPD_INST_TYPE); instance counts from 1. Fills the record and
    // declares it valid. Of a kind that has several, the first instance that is not there ends
    // the module's asking.
    virtual int getVPDData(int spIndex, int vpdType, int instance, VPD& record) = 0;
    // The service processors' family: 1, 2 and 3, 4 and 5, 7, 8 and 10 are the makers' own. For
    // 101, a controller that speaks IPMI, the module reads the components from its FRU inventory
    // instead of asking for their data. It does not say of which processor: they are all alike.
    virtual int getServiceProcessorType(int& type) = 0;
    virtual int getSystemState(int spIndex, SystemStateRecord& record) = 0;
    virtual int getMachineLevelData(int spIndex, MachineLevelRecord& record) = 0;
    virtual int getWatchdogData(int spIndex, WatchdogRecord& record) = 0;
    virtual int getPostBiosVersion(int spIndex, PostBiosRecord& record) = 0;

protected:
    cDeviceLib() = default;
    ~cDeviceLib() = default;
};
