// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Report.h"

#include <gmock/gmock.h>

#include "BuildPaths.h"
#include "ScopedEnvironment.h"
#include "TestServer.h"
#include "ValueText.h"

using namespace QZ;
using namespace Pegasus;
using testing::HasSubstr;
using testing::Not;

namespace {

const ClassDeclaration& _class(const char* name) {
    static const Schema schema = Schema::load(TAVQZ_SOURCE_DIR "/schema");
    return *schema.classes.find(name);
}

CIMInstance _lease() {
    CIMInstance lease("TAVIRA_Lease");
    lease.addProperty(CIMProperty("Identifier", CIMValue(String("TAVIRA|CorvanaAgent|Lease"))));
    lease.addProperty(CIMProperty("Term", CIMValue(Uint8(0))));
    lease.addProperty(CIMProperty("Lessor", CIMValue(String())));
    return lease;
}

std::string _human(const char* text) {
    return humanDate(CIMDateTime(text));
}

}  // namespace

TEST(Report, ShowsWhatHasAValueUnderItsNameForPeople) {
    CIMInstance lease = _lease();
    lease.addProperty(CIMProperty("Buyout", CIMValue(Uint32(1200))));
    lease.addProperty(CIMProperty("EndDate", CIMValue(CIMDateTime("20270131000000.000000+060"))));
    lease.addProperty(CIMProperty("Undeclared", CIMValue(String("x"))));
    EXPECT_EQ(reportSection(_class("TAVIRA_Lease"), {lease}),
              "Lease\n"
              "=====\n"
              "  Identifier  TAVIRA|CorvanaAgent|Lease\n"
              "  Buyout      1200\n"
              "  End date    2027-01-31\n"
              "  Undeclared  x\n");
}

TEST(Report, SaysThatNothingIsRecorded) {
    EXPECT_EQ(reportSection(_class("TAVIRA_Lease"), {_lease()}),
              "Lease\n=====\n  nothing recorded\n");
    EXPECT_EQ(reportSection(_class("TAVIRA_Lease"), {}), "");
}

TEST(Report, ShowsUnitsAndMeanings) {
    CIMInstance state("TAVIRA_VigilSystemState");
    state.addProperty(CIMProperty("PowerOnHours", CIMValue(Uint64(7))));
    state.addProperty(CIMProperty("CurrentState", CIMValue(Uint32(1))));
    state.addProperty(CIMProperty("StatusInfo", CIMValue(CIMTYPE_UINT16, false)));
    const std::string text = reportSection(_class("TAVIRA_VigilSystemState"), {state, state});
    EXPECT_THAT(text, HasSubstr("Service processor: system state (2)\n"));
    EXPECT_THAT(text, HasSubstr("  Power-on hours  7 Hours\n"));
    EXPECT_THAT(text, HasSubstr("  Current state   In POST (1)\n"));
    EXPECT_THAT(text, Not(HasSubstr("Status")));
}

TEST(Report, LetsNothingSteerTheTerminal) {
    CIMInstance lease = _lease();
    lease.addProperty(CIMProperty("Payment", CIMValue(String("\x1B]0;x\x07"))));
    EXPECT_THAT(reportSection(_class("TAVIRA_Lease"), {lease}), HasSubstr("\\x1B]0;x\\x07"));
}

TEST(ValueText, WritesDatesForPeople) {
    EXPECT_EQ(_human("20270131000000.000000+060"), "2027-01-31");
    EXPECT_EQ(_human("20270131100203.000000-330"), "2027-01-31 10:02:03 -05:30");
    EXPECT_EQ(_human("00000003020100.000000:000"), "00000003020100.000000:000");
}
