// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The thread that checks, held against a model of what must be told when.

#include <filesystem>
#include <map>

#include "CimText.h"
#include "ProviderTest.h"
#include "RepeatableRandom.h"
#include "SteppedClock.h"

using namespace Pegasus;

namespace {

constexpr std::int64_t _hour = 3600000;
constexpr std::int64_t _day = 24 * _hour;

// Class and severity of each alert, in the order of delivery.
using Told = std::vector<std::string>;

class Listener : public IndicationResponseHandler, public Framing {
public:
    explicit Listener(Told& told) : _told(told) {}
    void processing() override { Framing::processing(); }
    void complete() override { Framing::complete(); }
    void deliver(const CIMIndication& alert) override {
        const CIMConstProperty severity =
            alert.getProperty(alert.findProperty("PerceivedSeverity"));
        _told.push_back(QZ::make_string(alert.getClassName().getString()) + " " +
                        QZ::make_string(severity.getValue().toString()));
    }
    void deliver(const Array<CIMIndication>&) override { ADD_FAILURE(); }
    void deliver(const OperationContext&, const CIMIndication&) override { ADD_FAILURE(); }
    void deliver(const OperationContext&, const Array<CIMIndication>&) override { ADD_FAILURE(); }

private:
    Told& _told;
};

// A day from 1970-01-01 as a date; none for 0.
std::string dateText(std::int64_t day) {
    if (day == 0)
        return {};
    const auto seconds = static_cast<time_t>(day * 86400);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[16];
    (void)std::strftime(text, sizeof text, "%Y-%m-%d", &parts);
    return text;
}

class IndicationsTest : public ProviderTest {
protected:
    IndicationsTest() { QZ::AssetIDProvider::forgetReported(); }

    void setEndDays(std::int64_t lease, std::int64_t warranty) const {
        machine.writeAssetFile("LEASE.EndDate=" + dateText(lease) +
                               "\nWARRANTY.EndDate=" + dateText(warranty) + "\n");
    }
    std::int64_t today() { return clock.seconds() / 86400; }

    ScopedEnvironment zone{"TZ", "UTC"};
    SteppedClock clock;
    Told told;
    Listener listener{told};
};

// What must be told, from the rules alone.
class Model {
public:
    Model(Told& told, const std::int64_t& now) : _told(told), _now(now) {}

    std::int64_t endDays[2] = {0, 0};
    bool isBlocked = false;
    int count = 0;

    void enable(int provider) {
        if (++count != 1)
            return;
        _stop(provider);
        _threads[provider] = {true, true, _now + 5000};
    }
    void disable(int provider) {
        if (--count == 0)
            _stop(provider);
    }
    void advanceTo(std::int64_t end) {
        for (;;) {
            const int next = _earliest();
            if (next < 0 || _threads[next].nextCheck > end)
                break;
            _check(_threads[next].nextCheck);
            _threads[next].isFirst = false;
            _threads[next].nextCheck += _hour;
        }
    }
    void restart() {
        _isLoaded = false;
        _last[0] = _last[1] = -1;
    }
    std::size_t threads() const {
        return std::size_t{_threads[0].isAlive} + std::size_t{_threads[1].isAlive};
    }

private:
    struct CheckingThread {
        bool isAlive = false;
        bool isFirst = false;
        std::int64_t nextCheck = 0;
    };

    void _stop(int provider) {
        if (_threads[provider].isAlive && _threads[provider].isFirst)
            _check(_now);
        _threads[provider].isAlive = false;
    }
    int _earliest() const {
        int earliest = -1;
        for (int i = 0; i < 2; ++i) {
            if (_threads[i].isAlive &&
                (earliest < 0 || _threads[i].nextCheck < _threads[earliest].nextCheck))
                earliest = i;
        }
        return earliest;
    }
    void _check(std::int64_t now) {
        for (int i = 0; i < 2; ++i) {
            const int state = endDays[i] != 0 && now / _day > endDays[i] ? 1 : 0;
            if (state == _last[i])
                continue;
            _last[i] = state;
            if (!_isLoaded)
                _states = isBlocked ? std::map<int, int>() : _file;
            _isLoaded = true;
            if (_states[i] == state)
                continue;
            _states[i] = state;
            if (!isBlocked)
                _file = _states;
            _told.push_back(std::string("TAVIRA_") + (i == 0 ? "Lease" : "Warranty") +
                            "ExpirationEvent " + (state == 0 ? "2" : "4"));
        }
    }

    Told& _told;
    const std::int64_t& _now;
    CheckingThread _threads[2];
    int _last[2] = {-1, -1};
    std::map<int, int> _states;
    std::map<int, int> _file;
    bool _isLoaded = false;
};

}  // namespace

TEST_F(IndicationsTest, TellOfAPastEndDateAfterFiveSecondsAndOnce) {
    setEndDays(today() - 1, 0);
    provider->enableIndications(listener);
    clock.advance(4999, 1);
    EXPECT_EQ(Told(), told);
    clock.advance(1, 1);
    EXPECT_EQ(Told{"TAVIRA_LeaseExpirationEvent 4"}, told);
    clock.advance(3 * _hour, 1);
    EXPECT_EQ(1U, told.size());
    provider->disableIndications();
    EXPECT_EQ(1U, told.size());
}

TEST_F(IndicationsTest, TellNothingWithoutEndDates) {
    provider->enableIndications(listener);
    clock.advance(5000 + 2 * _hour, 1);
    provider->disableIndications();
    EXPECT_EQ(Told(), told);
    EXPECT_FALSE(machine.folder().contains("data/assetidprv.evt"));
}

TEST_F(IndicationsTest, TellOnceThatADateWasMovedIntoTheFuture) {
    setEndDays(today() - 1, 0);
    provider->enableIndications(listener);
    clock.advance(5000, 1);
    setEndDays(today() + 300, 0);
    clock.advance(3 * _hour, 1);
    provider->disableIndications();
    EXPECT_EQ((Told{"TAVIRA_LeaseExpirationEvent 4", "TAVIRA_LeaseExpirationEvent 2"}), told);
}

TEST_F(IndicationsTest, TellOfALaterDateWithTheNextHourlyCheck) {
    provider->enableIndications(listener);
    clock.advance(5000, 1);
    setEndDays(0, today() - 1);
    clock.advance(_hour - 1, 1);
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
    clock.advance(_hour, 1);
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
    clock.advance(365 * _day, 1);
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
    clock.advance(5000 + 3 * _hour, 1);
    setEndDays(0, 0);
    clock.advance(_hour, 1);
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

TEST_F(IndicationsTest, CountDisablingsThatNoEnablingPreceded) {
    provider->disableIndications();
    provider->enableIndications(listener);
    EXPECT_EQ(0, listener.processingCalls);
    provider->enableIndications(listener);
    EXPECT_EQ(1, listener.processingCalls);
    provider->disableIndications();
    EXPECT_EQ(1, listener.completeCalls);
}

TEST_F(IndicationsTest, TellWhatTheModelTells) {
    namespace fs = std::filesystem;
    const std::string journal = machine.folder().file("data/assetidprv.evt");
    for (unsigned seed = 1; seed <= 60; ++seed) {
        fs::remove_all(journal);
        QZ::AssetIDProvider::forgetReported();
        told.clear();
        setEndDays(0, 0);
        Told expected;
        std::int64_t now = clock.milliseconds();
        Model model(expected, now);
        QZ::AssetIDProvider* const providers[2] = {new QZ::AssetIDProvider,
                                                   new QZ::AssetIDProvider};
        auto random = repeatableRandom(seed);
        const auto upTo = [&random](unsigned end) { return static_cast<int>(random() % end); };
        for (int step = 0; step < 80; ++step) {
            const int which = upTo(2);
            switch (upTo(8)) {
                case 0:
                case 1:
                    providers[which]->enableIndications(listener);
                    model.enable(which);
                    break;
                case 2:
                    providers[which]->disableIndications();
                    model.disable(which);
                    break;
                case 3:
                    model.endDays[which] = upTo(3) == 0 ? 0 : now / _day + upTo(5) - 2;
                    setEndDays(model.endDays[0], model.endDays[1]);
                    break;
                case 4:
                    QZ::AssetIDProvider::forgetReported();
                    model.restart();
                    break;
                case 5:
                    if (model.isBlocked) {
                        fs::remove(journal);
                        if (fs::exists(journal + ".aside"))
                            fs::rename(journal + ".aside", journal);
                    } else {
                        if (fs::exists(journal))
                            fs::rename(journal, journal + ".aside");
                        fs::create_directory(journal);
                    }
                    model.isBlocked = !model.isBlocked;
                    break;
                default: {
                    const std::int64_t span = upTo(40) * _hour / 2 + upTo(8000);
                    clock.advance(span, model.threads());
                    model.advanceTo(now + span);
                    now += span;
                }
            }
            ASSERT_EQ(expected.size(), told.size()) << "seed " << seed << ", step " << step;
        }
        for (int i = 0; i < 2; ++i) {
            providers[i]->terminate();
        }
        for (; model.count > 0; --model.count)
            provider->disableIndications();
        for (; model.count < 0; ++model.count)
            provider->enableIndications(listener);
        fs::remove_all(journal + ".aside");
        told.resize(expected.size());
        EXPECT_EQ(expected, told) << "seed " << seed;
    }
}

TEST_F(IndicationsTest, StartAndEndAThousandTimes) {
    setEndDays(today() - 1, 0);
    for (int cycle = 1; cycle <= 1000; ++cycle) {
        provider->enableIndications(listener);
        if (cycle % 3 == 0)
            clock.advance(_hour, 1);
        provider->disableIndications();
    }
    EXPECT_EQ(1U, told.size());
    EXPECT_EQ(1000, listener.completeCalls);
}
