// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Due.h"

#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "CimDateTimes.h"
#include "CimText.h"
#include "ManualClock.h"
#include "ScopedEnvironment.h"

using namespace QZ;
using namespace Pegasus;

namespace {

// A server with an end date for each class, or a null one.
class EndDates : public Operations {
public:
    EndDates(const std::string& lease, const std::string& warranty)
        : _dates{{"TAVIRA_Lease", lease}, {"TAVIRA_Warranty", warranty}} {}

    std::vector<CIMInstance> enumerateInstances(const CIMObjectPath& path) override {
        CIMInstance instance(path.getClassName());
        const std::string& date = _dates.at(make_string(path.getClassName().getString()));
        if (!date.empty()) {
            instance.addProperty(CIMProperty(
                CIMName("EndDate"), CIMValue(make_CIMDateTime(DateTime(date.c_str(), 3)))));
        }
        return {instance};
    }
    const Schema& schema() override { throw std::logic_error("not asked"); }
    std::vector<CIMObjectPath> enumerateInstanceNames(const CIMObjectPath&) override { return {}; }
    CIMInstance getInstance(const CIMObjectPath&) override { return {}; }
    void modifyInstance(const CIMInstance&, const CIMPropertyList&) override {}
    CIMObjectPath createInstance(const CIMInstance&) override { return {}; }
    void deleteInstance(const CIMObjectPath&) override {}

private:
    std::map<std::string, std::string> _dates;
};

class DueTest : public ::testing::Test {
protected:
    static CommandResult due(const std::string& lease, const std::string& warranty,
                             const std::string& format = "table") {
        EndDates server(lease, warranty);
        return listDue(server, 90, format);
    }

    ScopedEnvironment zone{"TZ", "UTC"};
    ManualClock clock;  // 2027-01-15T08:00:00Z
};

}  // namespace

TEST_F(DueTest, IsFineWhereNothingRunsOut) {
    for (const auto& [lease, warranty] :
         {std::pair("", ""), {"2027-04-16", ""}, {"", "2040-01-01"}}) {
        const CommandResult result = due(lease, warranty);
        EXPECT_EQ(0, result.status) << lease << warranty;
        EXPECT_EQ("Nothing runs out within 90 days\n", result.text);
    }
}

TEST_F(DueTest, WarnsOfWhatRunsOutWorstFirst) {
    const CommandResult result = due("2027-04-15", "2027-01-16");
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("Warranty runs out in 1 day (2027-01-16)\nLease runs out in 90 days (2027-04-15)\n",
              result.text);
}

TEST_F(DueTest, CountsTheEndDayItself) {
    EXPECT_EQ("Lease runs out today (2027-01-15)\n", due("2027-01-15", "").text);
    EXPECT_EQ(1, due("2027-01-15", "").status);
    EXPECT_EQ(1, due("2027-01-15T00:30:00+13:00", "").status);
}

TEST_F(DueTest, AlarmsOfWhatHasRunOut) {
    const CommandResult result = due("2027-02-01", "2027-01-14");
    EXPECT_EQ(2, result.status);
    EXPECT_EQ("Warranty ran out 1 day ago (2027-01-14)\nLease runs out in 17 days (2027-02-01)\n",
              result.text);
}

TEST_F(DueTest, IsWrittenForProgramsToo) {
    EXPECT_EQ("what,endDate,days\r\nLease,2027-01-14,-1\r\n", due("2027-01-14", "", "csv").text);
    EXPECT_EQ(
        "[\n  {\n    \"what\": \"Lease\",\n    \"endDate\": \"2027-01-14\",\n    \"days\": -1\n"
        "  }\n]\n",
        due("2027-01-14", "", "json").text);
    EXPECT_EQ("[]\n", due("", "", "json").text);
}

TEST_F(DueTest, TakesDaysWithOrWithoutTheirUnit) {
    EXPECT_EQ(90, parseDays("90d"));
    EXPECT_EQ(0, parseDays("0"));
    for (const char* text : {"", "d", "-1", "90 d", "9w", "1.5", "99999999999"}) {
        EXPECT_THROW(parseDays(text), UsageError) << text;
    }
}
