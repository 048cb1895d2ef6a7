// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// The tables that instances are built from and modified by, held against the model.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "BuildPaths.h"
#include "RecordClasses.h"
#include "Schema.h"
#include "SerialNumberInstances.h"
#include "ServiceProcessorClasses.h"

namespace QZ {
namespace {

const Schema& _schema() {
    static const Schema schema = Schema::load(TAVQZ_SOURCE_DIR "/schema");
    return schema;
}

template <class Record>
void _compare(const char* className, const RecordClass<Record>& table) {
    const ClassDeclaration* declared = _schema().classes.find(className);
    ASSERT_NE(declared, nullptr) << className;
    const auto own = std::count_if(declared->properties.begin(), declared->properties.end(),
                                   [](const auto& property) { return !property.isPropagated; });
    EXPECT_EQ(std::size_t(own), table.propertyCount) << className;
    for (const RecordProperty<Record>& row : table) {
        const PropertyDeclaration* property = declared->find(row.name);
        ASSERT_NE(property, nullptr) << className << "." << row.name;
        EXPECT_EQ(property->name, row.name);
        EXPECT_FALSE(property->isPropagated) << row.name << " is sent, and so declared anew";
        EXPECT_EQ(property->type, row.type) << row.name;
        EXPECT_FALSE(property->isArray) << row.name;
        EXPECT_EQ(property->isWritable(), row.apply != nullptr) << row.name;
    }
    std::multiset<std::string> keys;
    for (const PropertyDeclaration& property : declared->properties) {
        if (property.isKey()) {
            keys.insert(property.name);
        }
    }
    EXPECT_EQ(keys, std::multiset<std::string>(table.keys, table.keys + table.keyCount))
        << className;
}

TEST(SchemaAgreement, DeclaresTheLeaseAsItIsBuilt) {
    _compare("TAVIRA_Lease", leaseClass);
}

TEST(SchemaAgreement, DeclaresTheWarrantyAsItIsBuilt) {
    _compare("TAVIRA_Warranty", warrantyClass);
}

TEST(SchemaAgreement, DeclaresTheSerialNumbersAsTheyAreBuilt) {
    _compare("TAVIRA_SerialNumberInformation", serialNumberClass);
}

TEST(SchemaAgreement, DeclaresTheComputerSystemDetailsAsTheyAreBuilt) {
    _compare("TAVIRA_ComputerSystemDetails", computerSystemDetailsClass);
}

TEST(SchemaAgreement, DeclaresTheServiceProcessorsAsTheyAreBuilt) {
    _compare("TAVIRA_VigilPresent", vigilPresentClass);
    _compare("TAVIRA_VigilWatchdog", vigilWatchdogClass);
    _compare("TAVIRA_VigilSystemState", vigilSystemStateClass);
    _compare("TAVIRA_VigilPostBiosVPD", vigilPostBiosVpdClass);
    _compare("TAVIRA_VigilMachineLevelVPD", vigilMachineLevelVpdClass);
    _compare("TAVIRA_VigilManagementProcessorVPD", vigilFirmwareVpdClass);
    _compare("TAVIRA_VigilComponentVPD", vigilComponentVpdClass);
    _compare("TAVIRA_VigilComponentVPD", ipmiComponentVpdClass);
}

}  // namespace
}  // namespace QZ
