// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "CimText.h"
#include "ProviderTest.h"
#include "SteppedClock.h"

constexpr std::int64_t HOUR = 3600000;  // milliseconds
constexpr std::int64_t DAY = 24 * HOUR;

// Class and severity of each alert, in the order of delivery.
using Told = std::vector<std::string>;

class Listener : public Pegasus::IndicationResponseHandler, public Framing {
public:
    explicit Listener(Told& told) : _told(told) {}
    void processing() override { Framing::processing(); }
    void complete() override { Framing::complete(); }
    void deliver(const Pegasus::CIMIndication& alert) override {
        const Pegasus::CIMConstProperty severity =
            alert.getProperty(alert.findProperty("PerceivedSeverity"));
        _told.push_back(QZ::make_string(alert.getClassName().getString()) + " " +
                        QZ::make_string(severity.getValue().toString()));
    }
    void deliver(const Pegasus::Array<Pegasus::CIMIndication>&) override { ADD_FAILURE(); }
    void deliver(const Pegasus::OperationContext&, const Pegasus::CIMIndication&) override {
        ADD_FAILURE();
    }
    void deliver(const Pegasus::OperationContext&,
                 const Pegasus::Array<Pegasus::CIMIndication>&) override {
        ADD_FAILURE();
    }

private:
    Told& _told;
};

// A day from 1970-01-01 as a date; none for 0.
inline std::string dateText(std::int64_t day) {
    if (day == 0)
        return {};
    const auto seconds = static_cast<time_t>(day * 86400);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[16];
    (void)std::strftime(text, sizeof text, "%Y-%m-%d", &parts);
    return text;
}

// A provider whose checks a test lets happen.
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
