// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruProvider.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include "FileLock.h"
#include "FruStore.h"
#include "Handlers.h"
#include "ManualClock.h"
#include "SourceServer.h"
#include "TestIpmi.h"
#include "TestMachine.h"
#include "Text.h"
#include "Units.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const CIMObjectPath _class("root/tavqz:TAVIRA_FRU");

CIMInstance _stored(const char* number, const char* name = "Fan") {
    return fruOf(
        {{"FRUNumber", number}, {"IdentifyingNumber", "7"}, {"Vendor", "Acme"}, {"Name", name}});
}

// Throws what is no exception.
class BrokenClock : public Clock {
public:
    std::int64_t seconds() override { return 0; }
    std::int64_t milliseconds() override { return 0; }
    int setSeconds(std::int64_t) override { return 0; }
    void sleepMilliseconds(unsigned) override { throw 5; }
};

class FruProviderTest : public testing::Test {
protected:
    FruProviderTest() { machine.folder().write("etc/hostname", "rack-1\n"); }
    ~FruProviderTest() override {
        provider->terminate();
        testIpmiUnits.clear();
    }

    void create(const CIMInstance& instance, const CIMObjectPath& path = _class) {
        Paths handler;
        provider->createInstance(OperationContext(), path, instance, handler);
        EXPECT_TRUE(handler.isWhole());
        EXPECT_THAT(handler.all, IsEmpty());
    }

    void modify(const CIMInstance& instance, const CIMObjectPath& path = _class) {
        Acknowledgement handler;
        provider->modifyInstance(OperationContext(), path, instance, false, CIMPropertyList(),
                                 handler);
        EXPECT_TRUE(handler.isWhole());
    }

    void remove(const CIMObjectPath& path) {
        Acknowledgement handler;
        provider->deleteInstance(OperationContext(), path, handler);
        EXPECT_TRUE(handler.isWhole());
    }

    std::vector<CIMInstance> enumerate(const CIMObjectPath& path = _class) {
        Instances handler;
        provider->enumerateInstances(OperationContext(), path, false, false, CIMPropertyList(),
                                     handler);
        EXPECT_TRUE(handler.isWhole());
        return handler.all;
    }

    std::vector<CIMInstance> get(const CIMObjectPath& path) {
        Instances handler;
        provider->getInstance(OperationContext(), path, false, false, CIMPropertyList(), handler);
        EXPECT_TRUE(handler.isWhole());
        return handler.all;
    }

    std::string data() const { return machine.folder().read("data/fru.dat"); }

    // Status and message of what the operation throws.
    template <class Operation>
    static std::pair<int, std::string> failure(Operation operation) {
        try {
            operation();
        } catch (const CIMException& exception) {
            return {exception.getCode(), make_string(exception.getMessage())};
        }
        return {0, "no exception"};
    }

    static CIMObjectPath keys(const char* number) {
        return CIMObjectPath(String("TAVIRA_FRU.FRUNumber=\"") + String(number) +
                             String("\",IdentifyingNumber=\"7\",Vendor=\"Acme\""));
    }

    const TestMachine machine;
    SourceServer server;
    FruProvider* const provider = new FruProvider;
};

const std::string _keysOfOne = "TAVIRA_FRU.FRUNumber=\"1\",IdentifyingNumber=\"7\",Vendor=\"Acme\"";

}  // namespace

TEST_F(FruProviderTest, HasNothingToTellOfNothing) {
    EXPECT_THAT(enumerate(), IsEmpty());
}

TEST_F(FruProviderTest, TellsGatheredUnitsAloneOfAnEmptyStore) {
    machine.folder().write("data/fru.dat", "");
    testIpmiUnits = {IpmiFru({"39M4", "M1", "Acme", "Fan", "A fan", 0})};
    server.sources["TAVIRA_VigilComponentVPD"] = {
        unitOf("TAVIRA_VigilComponentVPD",
               {{"FieldReplaceableUnitNumber", "2"}, {"Description", "DIMM 1"}})};
    server.sources["TAVIRA_RAIDController"] = {
        unitOf("TAVIRA_RAIDController", {{"FRU", "3"}, {"Name", "Controller 1"}})};
    const std::vector<CIMInstance> units = enumerate();
    EXPECT_THAT(textsOf(units, "ElementName"), ElementsAre("IPMI", "MPA", "RAID"));
    EXPECT_THAT(textsOf(units, "FRUNumber"), ElementsAre("39M4", "2", "3"));
    EXPECT_EQ("", data());
}

TEST_F(FruProviderTest, TellsStoredUnitsFirstAndWhereTheyAreFrom) {
    testIpmiUnits = {IpmiFru({"2", "M1", "Acme", "Pump", "A pump", 0})};
    create(_stored("1"));
    CIMInstance labelled = _stored("3");
    labelled.addProperty(CIMProperty(CIMName("ElementName"), CIMValue(String("IPMI"))));
    create(labelled);
    const std::string before = data();
    const std::vector<CIMInstance> units = enumerate();
    EXPECT_THAT(textsOf(units, "FRUNumber"), ElementsAre("1", "3", "2"));
    EXPECT_THAT(textsOf(units, "ElementName"), ElementsAre("GETFRU", "GETFRU", "IPMI"));
    EXPECT_EQ(before, data());
    EXPECT_THAT(before, Not(HasSubstr("GETFRU")));
}

TEST_F(FruProviderTest, LabelsAStoredUnitWhateverItsLabelWas) {
    CIMInstance unit = _stored("1");
    unit.addProperty(CIMProperty(CIMName("ElementName"), CIMValue(Uint8(5))));
    create(unit);
    EXPECT_THAT(textsOf(enumerate(), "ElementName"), ElementsAre("GETFRU"));
}

TEST_F(FruProviderTest, HidesGatheredUnitsOfAStoredNumber) {
    testIpmiUnits = {IpmiFru({"1", "other", "Other", "Other", "Other", 0})};
    create(_stored("1"));
    EXPECT_THAT(textsOf(enumerate(), "Name"), ElementsAre("Fan"));
}

TEST_F(FruProviderTest, TellsOfEqualGatheredUnitsEachTime) {
    const IpmiFru fan({"1", "M1", "Acme", "Fan", "A fan", 0});
    testIpmiUnits = {fan, fan};
    EXPECT_THAT(enumerate(), SizeIs(2));
}

TEST_F(FruProviderTest, NeverTellsOfAGatheredUnitWithoutAName) {
    server.sources["TAVIRA_RAIDController"] = {unitOf("TAVIRA_RAIDController", {{"FRU", "3"}})};
    EXPECT_THAT(enumerate(), IsEmpty());
}

TEST_F(FruProviderTest, ServesItsClassIgnoringCaseAndNoOther) {
    create(_stored("1"), CIMObjectPath("root/tavqz:tavira_fru"));
    EXPECT_THAT(enumerate(CIMObjectPath("root/tavqz:tavira_fru")), SizeIs(1));
    const std::pair<int, std::string> refused(CIM_ERR_INVALID_CLASS, "");
    const CIMObjectPath other("root/tavqz:TAVIRA_Lease");
    Paths paths;
    EXPECT_EQ(refused, failure([&] { enumerate(other); }));
    EXPECT_EQ(refused, failure([&] { get(other); }));
    EXPECT_EQ(refused,
              failure([&] { provider->enumerateInstanceNames(OperationContext(), other, paths); }));
    EXPECT_EQ(refused, failure([&] { create(_stored("2"), other); }));
    EXPECT_EQ(refused, failure([&] { modify(_stored("1"), other); }));
    EXPECT_EQ(refused, failure([&] { remove(other); }));
}

TEST_F(FruProviderTest, NamesWhatItTellsOf) {
    testIpmiUnits = {IpmiFru({"2", "M1", "Acme", "Pump", "A pump", 0})};
    create(_stored("1"));
    Paths handler;
    provider->enumerateInstanceNames(OperationContext(), _class, handler);
    EXPECT_TRUE(handler.isWhole());
    ASSERT_THAT(handler.all, SizeIs(2));
    EXPECT_EQ(_keysOfOne, make_string(handler.all[0].toString()));
    EXPECT_EQ(
        "//rack-1/root/tavqz:TAVIRA_FRU.FRUNumber=\"2\",IdentifyingNumber=\"M1\",Vendor=\"Acme\"",
        make_string(handler.all[1].toString()));
}

TEST_F(FruProviderTest, GetsAUnitByClassAndKeys) {
    const IpmiFru fan({"1", "7", "Acme", "Fan", "A fan", 0});
    testIpmiUnits = {fan, fan};
    EXPECT_THAT(textsOf(get(keys("1")), "ElementName"), ElementsAre("IPMI"));
    EXPECT_THAT(get(CIMObjectPath(String("//other-host/root/other:") + keys("1").toString())),
                SizeIs(1));
    EXPECT_THAT(get(keys("2")), IsEmpty());
}

TEST_F(FruProviderTest, StoresUnderTheKeysOfTheProperties) {
    CIMInstance unit = _stored("1");
    CIMObjectPath path = keys("other");
    path.setHost("rack-2");
    unit.setPath(path);
    create(unit);
    EXPECT_EQ(path, unit.getPath());
    EXPECT_EQ("//rack-2", make_string(enumerate()[0].getPath().toString()).substr(0, 8));
    EXPECT_THAT(get(keys("1")), SizeIs(1));
    EXPECT_THAT(get(keys("other")), IsEmpty());
}

TEST_F(FruProviderTest, ReplacesAUnitWhole) {
    CIMInstance unit = _stored("1");
    unit.addProperty(CIMProperty(CIMName("Description"), CIMValue(String("Left"))));
    create(unit);
    modify(_stored("1", "Pump"));
    const std::vector<CIMInstance> units = get(keys("1"));
    EXPECT_THAT(textsOf(units, "Name"), ElementsAre("Pump"));
    EXPECT_THAT(textsOf(units, "Description"), ElementsAre("-"));
}

TEST_F(FruProviderTest, DeletesTheUnitThatThePathNames) {
    create(_stored("1"));
    create(_stored("2"));
    remove(keys("1"));
    EXPECT_THAT(textsOf(enumerate(), "FRUNumber"), ElementsAre("2"));
}

TEST_F(FruProviderTest, PassesOnWhatTheStoreRefuses) {
    create(_stored("1"));
    const auto status = [](CIMStatusCode code, const std::string& message) {
        return std::pair<int, std::string>(code, message);
    };
    EXPECT_EQ(status(CIM_ERR_ALREADY_EXISTS, _keysOfOne + " exists already"),
              failure([&] { create(_stored("1", "Pump")); }));
    EXPECT_EQ(
        status(CIM_ERR_INVALID_PARAMETER, "TAVIRA_FRU has no value for Vendor"), failure([&] {
            create(fruOf({{"FRUNumber", "1"}, {"IdentifyingNumber", "7"}, {"Vendor", nullptr}}));
        }));
    EXPECT_EQ(status(CIM_ERR_INVALID_PARAMETER,
                     "TAVIRA_FRU has no value for FRUNumber, IdentifyingNumber, Vendor"),
              failure([&] {
                  modify(fruOf({{"Name", "Fan"}}));
              }));
    remove(keys("1"));
    EXPECT_EQ(status(CIM_ERR_NOT_FOUND, _keysOfOne + " is not stored"),
              failure([&] { modify(_stored("1")); }));
    EXPECT_EQ(status(CIM_ERR_NOT_FOUND, _keysOfOne + " is not stored"),
              failure([&] { remove(keys("1")); }));
    // None of them left the store locked.
    create(_stored("1"));
}

TEST_F(FruProviderTest, SaysWhyTheStoreFails) {
    const ManualClock clock;  // for a lock that is not had
    const FileLock lock(machine.folder().file("data/fru.dat"), FileLock::Exclusive);
    const std::pair<int, std::string> expected(
        CIM_ERR_FAILED, "Cannot lock " + machine.folder().file("data/fru.dat.lock") +
                            ": another process has held it for 10 seconds");
    EXPECT_EQ(expected, failure([&] { create(_stored("1")); }));
    EXPECT_EQ(expected, failure([&] { modify(_stored("1")); }));
    EXPECT_EQ(expected, failure([&] { remove(keys("1")); }));
}

TEST_F(FruProviderTest, HasAMessageForFailuresOfUnknownKind) {
    BrokenClock clock;  // which is asked while a lock is waited for
    const ClockReplacement replacement(clock);
    const FileLock lock(machine.folder().file("data/fru.dat"), FileLock::Exclusive);
    const auto failed = [](const char* message) {
        return std::pair<int, std::string>(CIM_ERR_FAILED, message);
    };
    EXPECT_EQ(failed(""), failure([&] { create(_stored("1")); }));
    EXPECT_EQ(failed("..."), failure([&] { modify(_stored("1")); }));
    EXPECT_EQ(failed("..."), failure([&] { remove(keys("1")); }));
    EXPECT_THAT(enumerate(), IsEmpty());
}

// What the interface throws that is no CIMException is of no known kind either.
TEST_F(FruProviderTest, HasAMessageForAnInstanceThatHoldsNothing) {
    EXPECT_EQ((std::pair<int, std::string>(CIM_ERR_FAILED, "")),
              failure([&] { create(CIMInstance()); }));
    EXPECT_EQ((std::pair<int, std::string>(CIM_ERR_FAILED, "...")),
              failure([&] { modify(CIMInstance()); }));
}

TEST_F(FruProviderTest, GoesOnWithoutAStoreThatCannotBeRead) {
    testIpmiUnits = {IpmiFru({"2", "M1", "Acme", "Pump", "A pump", 0})};
    create(_stored("1"));
    {
        const ManualClock clock;
        const FileLock lock(machine.folder().file("data/fru.dat"), FileLock::Exclusive);
        EXPECT_THAT(textsOf(enumerate(), "FRUNumber"), ElementsAre("2"));
    }
    EXPECT_THAT(textsOf(enumerate(), "FRUNumber"), ElementsAre("1", "2"));
    create(_stored("3"));
    EXPECT_THAT(textsOf(enumerate(), "FRUNumber"), ElementsAre("1", "3", "2"));
}

TEST_F(FruProviderTest, OpensAStoreThatIsOpen) {
    create(_stored("1"));
    {
        const MutexLock lock(_storeMutex);
        _fruStore().open(1);
    }
    EXPECT_THAT(enumerate(), SizeIs(1));
    {
        const MutexLock lock(_storeMutex);
        _fruStore().open(1);
    }
    create(_stored("2"));
    EXPECT_THAT(enumerate(), SizeIs(2));
}

TEST_F(FruProviderTest, AsksTheServerThatItIsInitializedWith) {
    _fruServer = nullptr;
    CIMOMHandle handle;
    provider->initialize(handle);
    EXPECT_EQ(&handle, _fruServer);
    EXPECT_THAT(enumerate(), IsEmpty());
}
