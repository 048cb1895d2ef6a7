// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WqlMatch.h"

#include <gtest/gtest.h>

#include <limits>

#include "MofParser.h"

using namespace QZ;
using namespace Pegasus;

namespace {

const ClassRepository& _classes() {
    static const ClassRepository CLASSES = [] {
        ClassRepository classes;
        classes.add(
            parseMof("class Top { uint16 N; }; class Alert : Top { string T; };"
                     "class Special : Alert { }; class Other { };",
                     "t.mof"));
        return classes;
    }();
    return CLASSES;
}

template <class T>
void _add(CIMInstance& instance, const char* name, const T& value) {
    instance.addProperty(CIMProperty(CIMName(name), CIMValue(value)));
}

CIMInstance _alert() {
    CIMInstance alert{CIMName("Alert")};
    _add(alert, "N", Uint16(4));
    _add(alert, "Low", std::numeric_limits<Sint64>::min());
    _add(alert, "High", std::numeric_limits<Uint64>::max());
    _add(alert, "Minus", Sint8(-3));
    _add(alert, "R", Real64(1.5));
    _add(alert, "NaN", std::numeric_limits<Real32>::quiet_NaN());
    _add(alert, "T", String("Lease"));
    _add(alert, "C", Char16('x'));
    _add(alert, "B", Boolean(true));
    _add(alert, "D", CIMDateTime("20270131120000.000000+060"));
    _add(alert, "Texts", Array<String>());
    CIMInstance inner{CIMName("Special")};
    _add(alert, "Inner", inner);
    _add(alert, "InnerObject", CIMObject(inner));
    alert.addProperty(CIMProperty(CIMName("Nil"), CIMValue(CIMTYPE_UINT16, false)));
    return alert;
}

bool _matches(const std::string& condition) {
    return matchesWql(parseWql("SELECT * FROM Alert WHERE " + condition), _alert(), _classes());
}

}  // namespace

TEST(WqlMatch, HoldsForWhatIsTrue) {
    for (const char* const condition : {"N = 4",
                                        "N <> 5",
                                        "N < 5",
                                        "N <= 4",
                                        "N > 3",
                                        "N >= 4",
                                        "3 < N",
                                        "N = 4.0",
                                        "N > -1",
                                        "N < 4.5",
                                        "Low = -9223372036854775808",
                                        "Low < -9223372036854775807",
                                        "High = 18446744073709551615",
                                        "High > 18446744073709551614",
                                        "Minus < 0",
                                        "Minus > -4",
                                        "Minus = -3",
                                        "R = 1.5",
                                        "R > 1",
                                        "R < 2",
                                        "T = 'Lease'",
                                        "T <> 'lease'",
                                        "T > 'Leas'",
                                        "T < 'Lease2'",
                                        "C = 'x'",
                                        "B = TRUE",
                                        "B <> FALSE",
                                        "D = '20270131110000.000000+000'",
                                        "D < '20270131120000.000000+000'",
                                        "Nil IS NULL",
                                        "Missing IS NULL",
                                        "N IS NOT NULL",
                                        "__CLASS ISA 'Alert'",
                                        "Alert ISA 'top'",
                                        "Inner ISA 'Alert'",
                                        "InnerObject ISA Special",
                                        "N = 4 AND T = 'Lease'",
                                        "N = 5 OR T = 'Lease'",
                                        "NOT N = 5",
                                        "NOT (N = 5 AND N = 4)",
                                        "N = 4 OR Nil = 1",
                                        "NOT (N = 5 AND Nil = 1)",
                                        "N = 5 OR N = 6 OR N = 4"}) {
        EXPECT_TRUE(_matches(condition)) << condition;
    }
}

TEST(WqlMatch, DoesNotHoldForWhatIsFalse) {
    for (const char* const condition : {"N = 5",
                                        "N <> 4",
                                        "N < 4",
                                        "N <= 3",
                                        "N > 4",
                                        "N >= 5",
                                        "N = -4",
                                        "Minus = 3",
                                        "Low > 0",
                                        "High < 0",
                                        "R = 1",
                                        "T = 'lease'",
                                        "T = 'Leas'",
                                        "C = 'y'",
                                        "B = FALSE",
                                        "D > '20270131120000.000000+000'",
                                        "N IS NULL",
                                        "__CLASS ISA 'Special'",
                                        "Inner ISA 'Other'",
                                        "N = 4 AND T = 'x'",
                                        "NOT N = 4"}) {
        EXPECT_FALSE(_matches(condition)) << condition;
    }
}

TEST(WqlMatch, NeitherHoldsNorNotForWhatIsUnknown) {
    for (const char* const condition :
         {"Nil = 1", "Nil <> 1", "Missing = 1", "NaN = 1", "NaN <> 1", "T = 1", "N = 'x'", "B = 1",
          "D = 'tomorrow'", "D < '00000003020100.000000:000'", "Texts = 'x'", "Nil ISA 'Alert'",
          "T ISA 'Alert'", "N = 4 AND Nil = 1", "N = 5 OR Nil = 1"}) {
        const std::string text = condition;
        EXPECT_FALSE(_matches(text)) << text;
        EXPECT_FALSE(_matches("NOT (" + text + ")")) << text;
    }
}

TEST(WqlMatch, TakesAClassAndThoseBelowIt) {
    const auto matches = [](const char* query, const char* className) {
        return matchesWql(parseWql(query), CIMInstance(CIMName(className)), _classes());
    };
    EXPECT_TRUE(matches("SELECT * FROM top", "Special"));
    EXPECT_TRUE(matches("SELECT * FROM Special", "SPECIAL"));
    EXPECT_FALSE(matches("SELECT * FROM Special", "Alert"));
    EXPECT_FALSE(matches("SELECT * FROM Unknown", "Unknown"));
}

TEST(WqlMatch, SelectsProperties) {
    const CIMInstance alert = _alert();
    EXPECT_EQ(selectWql(parseWql("SELECT * FROM Alert"), alert).getPropertyCount(),
              alert.getPropertyCount());
    const CIMInstance some = selectWql(parseWql("SELECT t, N, Missing FROM Alert"), alert);
    ASSERT_EQ(some.getPropertyCount(), 2U);
    EXPECT_EQ(some.getProperty(0).getName().getString(), String("N"));
    EXPECT_EQ(some.getProperty(1).getName().getString(), String("T"));
    EXPECT_EQ(alert.getPropertyCount(), _alert().getPropertyCount());
}
