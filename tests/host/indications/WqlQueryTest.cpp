// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WqlQuery.h"

#include <gmock/gmock.h>

#include "MofParser.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

std::string _canonical(const std::string& text) {
    return wqlText(parseWql(text));
}

template <class Call>
std::string _refusal(Call call) {
    try {
        call();
    } catch (const WqlError& error) {
        return error.what();
    }
    return "accepted";
}

std::string _refusalOf(const std::string& text) {
    return _refusal([&] { parseWql(text); });
}

std::string _checked(const std::string& condition, const std::string& selected = "*") {
    ClassRepository classes;
    classes.add(
        parseMof("class A { uint16 N; sint64 S; real32 R; string T; char16 C; boolean B;"
                 "  datetime D; string L[]; A ref P; };"
                 "class B : A { string Own; };",
                 "t.mof"));
    return _refusal(
        [&] { checkWql(parseWql("SELECT " + selected + " FROM A WHERE " + condition), classes); });
}

}  // namespace

TEST(WqlQuery, ReadsWhatIsSelected) {
    const WqlQuery all = parseWql("select * from CIM_AlertIndication");
    EXPECT_EQ(all.className, "CIM_AlertIndication");
    EXPECT_TRUE(all.properties.empty());
    EXPECT_TRUE(all.condition.parts.empty());
    const WqlQuery some = parseWql("SELECT A, C.B ,D FROM C");
    EXPECT_THAT(some.properties, testing::ElementsAre("A", "B", "D"));
}

TEST(WqlQuery, ReadsEveryCondition) {
    const struct {
        const char* condition;
        const char* canonical;
    } CASES[] = {
        {"a=1", "a = 1"},
        {"a <> -17", "a <> -17"},
        {"a < +17", "a < 17"},
        {"a<=1.5", "a <= 1.5"},
        {"a > 2.0", "a > 2.0"},
        {"a >= 1e3", "a >= 1000.0"},
        {"a = -0", "a = 0"},
        {"a = 18446744073709551615", "a = 18446744073709551615"},
        {"a = TRUE or a = false", "a = TRUE OR a = FALSE"},
        {"a = 'it''s \"x\"'", "a = \"it's \\\"x\\\"\""},
        {R"(a = "a\\b\"c""d\'")", R"(a = "a\\b\"c\"d'")"},
        {"a = ''", "a = \"\""},
        {"5 < a", "a > 5"},
        {"5 >= a", "a <= 5"},
        {"'x' = a", "a = \"x\""},
        {"a is null", "a IS NULL"},
        {"a IS NOT NULL", "NOT (a IS NULL)"},
        {"C.a = 1", "a = 1"},
        {"__CLASS ISA 'D'", "__CLASS ISA \"D\""},
        {"C ISA D", "__CLASS ISA \"D\""},
        {"a ISA D", "a ISA \"D\""},
        {"a=1 OR b=2 AND c=3", "a = 1 OR (b = 2 AND c = 3)"},
        {"(a=1 OR b=2) AND c=3", "(a = 1 OR b = 2) AND c = 3"},
        {"NOT a=1 AND b=2", "NOT (a = 1) AND b = 2"},
        {"not (a=1 AND b=2)", "NOT (a = 1 AND b = 2)"},
        {"NOT NOT ((a=1))", "NOT (NOT (a = 1))"},
        {"a=1\tAND\r\nb=2", "a = 1 AND b = 2"},
        {"\xC3\xA9t\xC3\xA9 = 1", "\xC3\xA9t\xC3\xA9 = 1"},
    };
    for (const auto& one : CASES) {
        const std::string text = _canonical(std::string("SELECT * FROM C WHERE ") + one.condition);
        EXPECT_EQ(text, std::string("SELECT * FROM C WHERE ") + one.canonical);
        EXPECT_EQ(_canonical(text), text);
    }
}

TEST(WqlQuery, SaysWhatItDoesNotUnderstandAndWhere) {
    const struct {
        const char* query;
        const char* reason;
    } CASES[] = {
        {"", "character 1 of the query: SELECT expected, not the end"},
        {"DELETE", "character 1 of the query: SELECT expected, not \"DELETE\""},
        {"SELECT FROM C", "character 8 of the query: a property expected, not \"FROM\""},
        {"SELECT *, a FROM C", "character 9 of the query: FROM expected, not \",\""},
        {"SELECT * FROM", "character 14 of the query: a class expected, not the end"},
        {"SELECT * FROM C D", "character 17 of the query: WHERE or the end expected, not \"D\""},
        {"SELECT * FROM C WHERE", "a property expected, not the end"},
        {"SELECT * FROM C WHERE a", "a comparison expected, not the end"},
        {"SELECT * FROM C WHERE a = b", "a string, a number, TRUE or FALSE expected, not \"b\""},
        {"SELECT * FROM C WHERE a = NULL", "a string, a number, TRUE or FALSE expected"},
        {"SELECT * FROM C WHERE a LIKE 'b'", "a comparison expected, not \"LIKE\""},
        {"SELECT * FROM C WHERE 1 = 2", "a property expected, not \"2\""},
        {"SELECT * FROM C WHERE a IS 5", "NULL expected, not \"5\""},
        {"SELECT * FROM C WHERE (a = 1", "\")\" expected, not the end"},
        {"SELECT * FROM C WHERE a = 1)", "AND, OR or the end expected, not \")\""},
        {"SELECT * FROM C WHERE a = 'b", "character 27 of the query: the string has no end"},
        {"SELECT * FROM C WHERE a = 'b\\n'", "character 29 of the query: a backslash"},
        {"SELECT * FROM C WHERE a = #1", "character 27 of the query: nothing of the kind"},
        {"SELECT * FROM C WHERE D.a = 1", "is the class of the query, C, not D"},
        {"SELECT * FROM C WHERE a ISA 'no name'", "a class expected"},
        {"SELECT * FROM C WHERE a = 18446744073709551616", "is out of range"},
        {"SELECT * FROM C WHERE a = 1e999", "is out of range"},
        {"SELECT * FROM C GROUP BY a", "WHERE or the end expected, not \"GROUP\""},
    };
    for (const auto& one : CASES) {
        EXPECT_THAT(_refusalOf(one.query), HasSubstr(one.reason)) << one.query;
    }
}

TEST(WqlQuery, IsBounded) {
    const std::string query = "SELECT * FROM C WHERE ";
    EXPECT_EQ(_refusalOf(query + std::string(63, '(') + "a=1" + std::string(63, ')')), "accepted");
    EXPECT_THAT(_refusalOf(query + std::string(65, '(') + "a=1" + std::string(65, ')')),
                HasSubstr("more than 64"));
    std::string many = query + "a=1";
    while (many.size() < 16000) {
        many += " OR a=1";
    }
    EXPECT_EQ(_refusalOf(many), "accepted");
    EXPECT_THAT(_refusalOf(many + std::string(400, ' ')), HasSubstr("longer than 16384 bytes"));
}

TEST(WqlCheck, TakesWhatGoesTogether) {
    for (const char* const condition :
         {"n = 1", "N < 1.5", "S >= -3", "R <> 2", "T > 'a'", "C = 'x'", "B = TRUE", "B <> FALSE",
          "D < '20270131000000.000000+060'", "L IS NULL", "P IS NOT NULL", "__CLASS ISA 'B'",
          "P ISA 'A'"}) {
        EXPECT_EQ(_checked(condition), "accepted") << condition;
    }
}

TEST(WqlCheck, RefusesWhatDoesNot) {
    EXPECT_THAT(_checked("Own = 'x'"), HasSubstr("the class A has no property Own"));
    EXPECT_THAT(_checked("N = 1", "Own"), HasSubstr("the class A has no property Own"));
    EXPECT_THAT(_checked("N = '1'"), HasSubstr("the property N is of type uint16, which does not"));
    EXPECT_THAT(_checked("NOT (N = 1 OR T = 1)"), HasSubstr("the property T is of type string"));
    EXPECT_THAT(_checked("B = 1"), HasSubstr("boolean"));
    EXPECT_THAT(_checked("B < TRUE"), HasSubstr("= and <> compare it"));
    EXPECT_THAT(_checked("D = 'tomorrow'"), HasSubstr("datetime"));
    EXPECT_THAT(_checked("L = 'x'"), HasSubstr("is an array"));
    EXPECT_THAT(_checked("P = 'x'"), HasSubstr("reference"));
    EXPECT_THAT(_checked("__CLASS ISA 'C'"), HasSubstr("there is no class C"));
    EXPECT_THAT(_refusal([] { checkWql(parseWql("SELECT * FROM X"), ClassRepository()); }),
                HasSubstr("there is no class X"));
}
