// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Description.h"

#include <gmock/gmock.h>

#include "FieldText.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Description _read(const std::string& text) {
    const Description::Parsed parsed = Description::parse(text);
    EXPECT_THAT(parsed.mistakes, IsEmpty());
    return parsed.description;
}

// What is wrong with a text of one line.
std::string _mistake(const std::string& line) {
    const Description::Parsed parsed = Description::parse(line);
    EXPECT_EQ(parsed.mistakes.size(), 1U) << line;
    return parsed.mistakes.empty() ? "" : parsed.mistakes[0];
}

}  // namespace

TEST(SimulatedDescription, LeavesCommentsAndBlankLinesOut) {
    const Description description = _read("# type = 9\n\n  \t\r\n  # count = 3\ntype = 2");
    EXPECT_EQ(description.number(0, "type", 1), 2);
    EXPECT_EQ(description.number(0, "count", 1), 1);
}

TEST(SimulatedDescription, ReadsAKeyAndAValueOfEachKind) {
    const Description description = _read(
        "count=-1\ntype = 101\nmachine.uuid = 0123456789ABCDEF\nmachine.type = 8840\n"
        "machine.model = 25X\nmachine.serial = 99A0001\npostbios.level = L = 1 # not a comment\n"
        "postbios.date = 03/02/2025\npostbios.version = -2147483648\n"
        "state.hours = 9223372036854775807\nstate.restarts = 65535\nstate.status = 0\n"
        "state.current = 4294967295\nwatchdog.post = -1\nwatchdog.loader = 0\n"
        "watchdog.os = 300\nwatchdog.power = 2147483647\r\n");
    EXPECT_EQ(description.number(-1, "count", 1), -1);
    EXPECT_EQ(description.text(0, "machine.model"), "25X");
    EXPECT_EQ(description.text(0, "postbios.level"), "L = 1 # not a comment");
    EXPECT_EQ(description.number(0, "postbios.version", 0), -2147483648LL);
    EXPECT_EQ(description.number(0, "state.hours", 0), 9223372036854775807LL);
    EXPECT_EQ(description.number(0, "state.current", 0), 4294967295LL);
    EXPECT_EQ(description.number(0, "watchdog.power", -1), 2147483647LL);
}

TEST(SimulatedDescription, ReadsAFailureAndADelayOfEachQuery) {
    for (const char* query : {"vpd", "type", "state", "machine", "watchdog", "postbios"}) {
        const std::string name = query;
        std::string text = "fail.";
        text.append(name).append(" = -5\ndelay.").append(name).append(" = 600000\n");
        const Description description = _read(text);
        EXPECT_EQ(description.number(0, "fail." + name, 0), -5);
        EXPECT_EQ(description.number(0, "delay." + name, 0), 600000);
    }
}

TEST(SimulatedDescription, ReadsEveryFieldOfARecord) {
    int fields = 0;
#define CHECK_FIELD(family, name, id, type)                            \
    _read("vpd.18.1." #family "_" #name " = " + example(VPD::type{})); \
    ++fields;
    struct {
        std::string operator()(VPD::Int) const { return "-7"; }
        std::string operator()(VPD::Byte) const { return "255"; }
        std::string operator()(const VPD::String&) const { return "any text"; }
        std::string operator()(const VPD::Calendar&) const { return "5 -1 2004"; }
        std::string operator()(const VPD::ManufactureDate&) const { return "12 2004"; }
        std::string operator()(const VPD::Bytes&) const { return "00 ff 7"; }
        std::string operator()(const VPD::MacAddresses&) const { return "0 1a 64, 0 1a 65"; }
        std::string operator()(const VPD::Interfaces&) const { return "1 2 3, 4 5 4294967295"; }
    } const example;
    TAVQZ_VPD_FIELDS(CHECK_FIELD)
#undef CHECK_FIELD
    EXPECT_EQ(fields, 59);
    EXPECT_EQ(_read("vpd.255.999.invalid = yes").below(0, "vpd.255.999.").count("invalid"), 1U);
}

TEST(SimulatedDescription, TakesValuesApartAsTheyAreWritten) {
    VPD::Calendar date{};
    EXPECT_TRUE(readField("5 3 2004", date));
    EXPECT_EQ(date.day * 10000000 + date.month * 10000 + date.year, 50032004);
    VPD::MacAddresses addresses;
    EXPECT_TRUE(readField("0 1a 64,ff", addresses));
    EXPECT_THAT(addresses, ElementsAre(ElementsAre(0, 0x1a, 0x64), ElementsAre(0xff)));
    VPD::Interfaces interfaces;
    EXPECT_TRUE(readField("1 2 3,4 5 6", interfaces));
    ASSERT_EQ(interfaces.size(), 2U);
    EXPECT_THAT(interfaces[1].words, ElementsAre(4U, 5U, 6U));
}

TEST(SimulatedDescription, ReadsAnyBytesThatAreWrittenAsEscapes) {
    const Description description =
        _read("machine.uuid = \\x00\\xFF\\n\\\\\\s\nmachine.type = \xFF<&\x01\n");
    EXPECT_EQ(description.text(0, "machine.uuid"), std::string("\0\xFF\n\\ ", 5));
    EXPECT_EQ(description.text(0, "machine.type"), "\xFF<&\x01");
}

TEST(SimulatedDescription, PrefersWhatIsSaidOfOneProcessor) {
    const Description description = _read(
        "watchdog.os = 60\nsp1.watchdog.os = 90\nvpd.3.1.FB_POSID = 1\nvpd.3.1.FB_VPDID = 1\n"
        "sp1.vpd.3.1.FB_POSID = 2\nsp1.vpd.3.2.FB_POSID = 3\nsp255.fail.vpd = 1\n");
    EXPECT_EQ(description.number(0, "watchdog.os", -1), 60);
    EXPECT_EQ(description.number(1, "watchdog.os", -1), 90);
    EXPECT_EQ(description.number(-1, "watchdog.os", -1), 60);
    EXPECT_EQ(description.below(0, "vpd.3.1.")["FB_POSID"], "1");
    EXPECT_EQ(description.below(1, "vpd.3.1.")["FB_POSID"], "2");
    EXPECT_EQ(description.below(1, "vpd.3.1.")["FB_VPDID"], "1");
    EXPECT_THAT(description.below(0, "vpd.3.2."), IsEmpty());
    EXPECT_EQ(description.below(1, "vpd.3.2.").size(), 1U);
}

TEST(SimulatedDescription, SaysWhatIsWrongWithALine) {
    const std::pair<const char*, const char*> lines[] = {
        {"count 2", R"(line 1: "count 2" is neither a comment nor "key = value")"},
        {"= 2", R"(line 1: "" is no key)"},
        {"speed = 2", R"(line 1: "speed" is no key)"},
        {"Count = 2", R"(line 1: "Count" is no key)"},
        {"sp1.speed = 2", R"(line 1: "sp1.speed" is no key)"},
        {"sp256.watchdog.os = 2", R"(line 1: "sp256.watchdog.os" is no key)"},
        {"sp01.watchdog.os = 2", R"(line 1: "sp01.watchdog.os" is no key)"},
        {"fail.everything = 2", R"(line 1: "fail.everything" is no key)"},
        {"sp0.count = 2", R"(line 1: "sp0.count" is said of all processors at once)"},
        {"sp0.type = 2", R"(line 1: "sp0.type" is said of all processors at once)"},
        {"sp0.fail.type = 2", R"(line 1: "sp0.fail.type" is said of all processors at once)"},
        {"sp0.delay.type = 2", R"(line 1: "sp0.delay.type" is said of all processors at once)"},
        {"count =", "line 1: count is \"\", but it is a number from -2147483648 to 2147483647"},
        {"count = 2 # two", R"(line 1: count is "2 # two", but it is a number from -2147483648 to )"
                            "2147483647"},
        {"type = 2147483648",
         R"(line 1: type is "2147483648", but it is a number from -2147483648 to 2147483647)"},
        {"state.restarts = 65536",
         R"(line 1: state.restarts is "65536", but it is a number from 0 to 65535)"},
        {"state.hours = 99999999999999999999",
         R"(line 1: state.hours is "99999999999999999999", but it is a number from 0 to )"
         "9223372036854775807"},
        {"delay.vpd = -1", R"(line 1: delay.vpd is "-1", but it is a number from 0 to 600000)"},
        {"machine.type = 884012",
         R"(line 1: machine.type is "884012", but it has room for 5 characters)"},
        {"vpd.x.1.FB_POSID = 1", R"(line 1: "vpd.x.1.FB_POSID" has no kind from 0 to 255)"},
        {"vpd.256.1.FB_POSID = 1", R"(line 1: "vpd.256.1.FB_POSID" has no kind from 0 to 255)"},
        {"vpd = 1", R"(line 1: "vpd" is no key)"},
        {"vpd.1 = 1", R"(line 1: "vpd.1" has no instance from 1 to 999)"},
        {"vpd.1.0.FB_POSID = 1", R"(line 1: "vpd.1.0.FB_POSID" has no instance from 1 to 999)"},
        {"vpd.1.1 = 1", R"(line 1: "vpd.1.1" ends in no field of a VPD record)"},
        {"vpd.1.1.POSID = 1", R"(line 1: "vpd.1.1.POSID" ends in no field of a VPD record)"},
        {"vpd.1.1.x.FB_POSID = 1",
         R"(line 1: "vpd.1.1.x.FB_POSID" ends in no field of a VPD record)"},
        {"vpd.1.1.invalid = no", R"(line 1: vpd.1.1.invalid is "no", but it is "yes")"},
        {"vpd.1.1.FB_POSID = one",
         R"(line 1: vpd.1.1.FB_POSID is "one", but it is a decimal number)"},
        {"vpd.1.1.FB_MODULE_WIDTH = 256",
         R"(line 1: vpd.1.1.FB_MODULE_WIDTH is "256", but it is a number from 0 to 255)"},
        {"vpd.1.1.VB_IMAGE_TIMESTAMP = 5 3",
         R"(line 1: vpd.1.1.VB_IMAGE_TIMESTAMP is "5 3", but it is a day, a month and a year)"},
        {"vpd.1.1.VB_IMAGE_TIMESTAMP = 5 3 2004 1",
         R"(line 1: vpd.1.1.VB_IMAGE_TIMESTAMP is "5 3 2004 1", but it is a day, a month and a )"
         "year"},
        {"vpd.1.1.FB_MANUFACTURE_DATE = 5",
         R"(line 1: vpd.1.1.FB_MANUFACTURE_DATE is "5", but it is two numbers)"},
        {"vpd.1.1.FB_UUID = 0 100",
         R"(line 1: vpd.1.1.FB_UUID is "0 100", but it is bytes in hexadecimal digits)"},
        {"vpd.1.1.FB_MAC_ADDRESSES = 0 1,g",
         R"(line 1: vpd.1.1.FB_MAC_ADDRESSES is "0 1,g", but it is bytes in hexadecimal digits, )"
         "with commas between addresses"},
        {"vpd.1.1.FB_INTERNAL_INTERFACES = 1 2",
         R"(line 1: vpd.1.1.FB_INTERNAL_INTERFACES is "1 2", but it is three numbers, with commas )"
         "between interfaces"},
        {"\x1B[31m", "line 1: \"\\x1B[31m\" is neither a comment nor \"key = value\""},
    };
    for (const auto& [line, mistake] : lines) {
        EXPECT_EQ(_mistake(line), mistake);
    }
}

TEST(SimulatedDescription, CountsLinesAndCutsLongOnesShort) {
    const Description::Parsed parsed = Description::parse(
        "# first\ncount = 1\n\ncount = 2\nspeed = 1\nsp1.vpd.1.1.FB_POSID = 1\n"
        "sp1.vpd.1.1.FB_POSID = 1\n" +
        std::string(1000, 'A'));
    EXPECT_THAT(parsed.mistakes,
                ElementsAre("line 4: count was said before", R"(line 5: "speed" is no key)",
                            "line 7: sp1.vpd.1.1.FB_POSID was said before",
                            "line 8: \"" + std::string(60, 'A') +
                                "...\" is neither a comment nor \"key = value\""));
    EXPECT_EQ(parsed.description.number(0, "count", 0), 1) << "the line that is right stays";
}
