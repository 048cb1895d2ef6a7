// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// When the thread checks, and what it tells.

#include "IndicationsTest.h"

#include "NoRoomForThreads.h"

using namespace Pegasus;

TEST_F(IndicationsTest, TellOfAPastEndDateAfterFiveSecondsAndOnce) {
    setEndDays(today() - 1, 0);
    provider->enableIndications(listener);
    clock.advance(4999, 1);
    EXPECT_EQ(Told(), told);
    clock.advance(1, 1);
    EXPECT_EQ(Told{"TAVIRA_LeaseExpirationEvent 4"}, told);
    clock.advance(3 * HOUR, 1);
    EXPECT_EQ(1U, told.size());
    provider->disableIndications();
    EXPECT_EQ(1U, told.size());
}

TEST_F(IndicationsTest, TellNothingWithoutEndDates) {
    provider->enableIndications(listener);
    clock.advance(5000 + 2 * HOUR, 1);
    provider->disableIndications();
    EXPECT_EQ(Told(), told);
    EXPECT_FALSE(machine.folder().contains("data/assetidprv.evt"));
}

TEST_F(IndicationsTest, TellOnceThatADateWasMovedIntoTheFuture) {
    setEndDays(today() - 1, 0);
    provider->enableIndications(listener);
    clock.advance(5000, 1);
    setEndDays(today() + 300, 0);
    clock.advance(3 * HOUR, 1);
    provider->disableIndications();
    EXPECT_EQ((Told{"TAVIRA_LeaseExpirationEvent 4", "TAVIRA_LeaseExpirationEvent 2"}), told);
}

TEST_F(IndicationsTest, TellOfALaterDateWithTheNextHourlyCheck) {
    provider->enableIndications(listener);
    clock.advance(5000, 1);
    setEndDays(0, today() - 1);
    clock.advance(HOUR - 1, 1);
    EXPECT_EQ(Told(), told);
    clock.advance(1, 1);
    EXPECT_EQ(Told{"TAVIRA_WarrantyExpirationEvent 4"}, told);
    provider->disableIndications();
}

TEST_F(IndicationsTest, TellOfAnEndDateThatAClientSet) {
    setEndDays(today() + 100, 0);
    provider->enableIndications(listener);
    clock.advance(5000, 1);
    EXPECT_EQ(Told(), told);
    CIMInstance lease = instance("TAVIRA_Lease");
    add(lease, "EndDate", date("20200131000000.000000+000"));
    modify("TAVIRA_Lease", lease);
    clock.advance(HOUR, 1);
    EXPECT_EQ(Told{"TAVIRA_LeaseExpirationEvent 4"}, told);
    provider->disableIndications();
}

TEST_F(IndicationsTest, CheckOnceWhereTheyEndBeforeTheFirstCheck) {
    setEndDays(today() - 1, 0);
    provider->enableIndications(listener);
    provider->disableIndications();
    EXPECT_EQ(Told{"TAVIRA_LeaseExpirationEvent 4"}, told);
    EXPECT_EQ(1, listener.completeCalls);
}

TEST_F(IndicationsTest, CheckNothingWhereTheyEndBetweenTwoChecks) {
    provider->enableIndications(listener);
    clock.advance(5000, 1);
    setEndDays(today() - 1, 0);
    provider->disableIndications();
    EXPECT_EQ(Told(), told);
}

TEST_F(IndicationsTest, PassAYearInATest) {
    setEndDays(today() + 100, today() + 200);
    provider->enableIndications(listener);
    clock.advance(365 * DAY, 1);
    EXPECT_EQ((Told{"TAVIRA_LeaseExpirationEvent 4", "TAVIRA_WarrantyExpirationEvent 4"}), told);
    provider->disableIndications();
}

TEST_F(IndicationsTest, SurviveACheckThatFails) {
    class Refusing : public Listener {
    public:
        using Listener::Listener;
        void deliver(const CIMIndication&) override {
            throw CIMException(CIM_ERR_FAILED, "no listener");
        }
    };
    Refusing refusing(told);
    setEndDays(today() - 1, today() - 1);
    provider->enableIndications(refusing);
    clock.advance(5000 + 3 * HOUR, 1);
    setEndDays(0, 0);
    clock.advance(HOUR, 1);
    provider->disableIndications();
    EXPECT_EQ(Told(), told);
}

TEST_F(IndicationsTest, EndWithTheProvider) {
    auto* const other = new QZ::AssetIDProvider;
    setEndDays(today() - 1, 0);
    other->enableIndications(listener);
    other->terminate();
    EXPECT_EQ(1U, told.size());
    // The count stays what the calls made of it.
    provider->enableIndications(listener);
    EXPECT_EQ(1, listener.processingCalls);
    provider->disableIndications();
    provider->disableIndications();
}

TEST_F(IndicationsTest, EndWithTheProviderBetweenTwoChecks) {
    auto* const other = new QZ::AssetIDProvider;
    other->enableIndications(listener);
    clock.advance(5000 + HOUR, 1);
    setEndDays(today() - 1, 0);
    delete other;
    EXPECT_EQ(Told(), told);
    clock.advance(HOUR, 0);
    EXPECT_EQ(Told(), told);
    provider->disableIndications();
}

TEST_F(IndicationsTest, CountNoEnablingThatFails) {
    class Refusing : public Listener {
    public:
        using Listener::Listener;
        void processing() override { throw CIMException(CIM_ERR_FAILED, "no listener"); }
    };
    Refusing refusing(told);
    EXPECT_EQ(CIM_ERR_FAILED, failure([&] { provider->enableIndications(refusing); }).first);
    {
        const NoRoomForThreads full;
        EXPECT_EQ(CIM_ERR_FAILED, failure([&] { provider->enableIndications(listener); }).first);
    }
    clock.advance(HOUR, 0);
    EXPECT_EQ(0, listener.processingCalls);
    setEndDays(today() - 1, 0);
    provider->enableIndications(listener);
    EXPECT_EQ(1, listener.processingCalls);
    clock.advance(5000, 1);
    EXPECT_EQ(Told{"TAVIRA_LeaseExpirationEvent 4"}, told);
    provider->disableIndications();
    EXPECT_EQ(1, listener.completeCalls);
}

TEST_F(IndicationsTest, CountDisablingsThatNoEnablingPreceded) {
    provider->disableIndications();
    provider->enableIndications(listener);
    EXPECT_EQ(0, listener.processingCalls);
    provider->enableIndications(listener);
    EXPECT_EQ(1, listener.processingCalls);
    provider->disableIndications();
    EXPECT_EQ(1, listener.completeCalls);
}

TEST_F(IndicationsTest, StartAndEndAThousandTimes) {
    setEndDays(today() - 1, 0);
    for (int cycle = 1; cycle <= 1000; ++cycle) {
        provider->enableIndications(listener);
        if (cycle % 3 == 0)
            clock.advance(HOUR, 1);
        provider->disableIndications();
    }
    EXPECT_EQ(1U, told.size());
    EXPECT_EQ(1000, listener.completeCalls);
}
