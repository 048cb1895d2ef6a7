// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Sel.h"

#include <gmock/gmock.h>

#include "ManualClock.h"
#include "SelBuilder.h"
#include "TestBmc.h"

using namespace QZ;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A controller with so many records, and what "sel" makes of them.
class SelTest : public testing::Test {
protected:
    SelTest() { _request.command = Request::Sel; }

    void put(unsigned records, unsigned told) {
        const std::string low(1, static_cast<char>(told & 0xFFU));
        const std::string high(1, static_cast<char>(told >> 8U));
        reply("0a 40", '\x51' + low + high + std::string(2, '\xFF') + std::string(9, '\0'));
        for (unsigned record = 1; record <= records; ++record) {
            _bmc.event(selRecord({record, 0, 8, 0x41, 0x6F, 1}));
        }
    }
    void reply(const std::string& command, const std::string& data) {
        IpmiReplies replies;
        replies.add(*IpmiReplies::parseRequest(command), {IpmiNormal, data});
        const std::string line = replies.text();
        _bmc.reply(command, line.substr(line.find("= ") + 2));
    }
    CommandResult list() {
        Bmc bmc;
        return listSel(_request, bmc, [this](const std::string& line) { _notes.push_back(line); });
    }
    static std::size_t lines(const std::string& text) {
        return std::size_t(std::count(text.begin(), text.end(), '\n'));
    }

    TestBmc _bmc;
    Request _request;
    std::vector<std::string> _notes;
};

}  // namespace

TEST_F(SelTest, WritesEveryRecord) {
    put(3, 3);
    _request.isRaw = true;
    const CommandResult result = list();
    EXPECT_EQ(result.status, EXIT_OK);
    EXPECT_EQ(result.text,
              "01 00 02 00 00 00 00 20 00 04 08 41 6f 01 ff ff\n"
              "02 00 02 00 00 00 00 20 00 04 08 41 6f 01 ff ff\n"
              "03 00 02 00 00 00 00 20 00 04 08 41 6f 01 ff ff\n");
    EXPECT_THAT(_notes, IsEmpty());
}

TEST_F(SelTest, SaysThatThereIsNoEvent) {
    put(0, 0);
    const CommandResult result = list();
    EXPECT_EQ(result.status, EXIT_OK);
    EXPECT_EQ(result.text, "The System Event Log is empty\n");
}

TEST_F(SelTest, GoesOnWhereACallEnds) {
    ManualClock clock;
    put(40, 40);
    _bmc.takeMilliseconds(250);  // about twenty to a call
    _request.isRaw = true;
    const CommandResult result = list();
    EXPECT_EQ(result.status, EXIT_OK);
    EXPECT_EQ(lines(result.text), 40U);
    EXPECT_THAT(_notes, IsEmpty());
}

TEST_F(SelTest, KeepsWhatItHasWhenTheControllerStopsAnswering) {
    ManualClock clock;
    put(5, 5);
    _bmc.reply("0a 43 00 00 03 00 00 ff", "none");
    _request.isRaw = true;
    const CommandResult result = list();
    EXPECT_EQ(result.status, EXIT_FAILED);
    EXPECT_EQ(lines(result.text), 2U);
    EXPECT_THAT(_notes,
                ElementsAre("The management controller stopped answering behind 2 records"));
}

TEST_F(SelTest, SaysThatRecordsAreMissing) {
    put(2, 300);
    EXPECT_EQ(list().status, EXIT_FAILED);
    EXPECT_THAT(_notes, ElementsAre("The management controller tells of 300 records and gave 2"));
}

TEST_F(SelTest, EndsWhereRecordsGoInACircle) {
    put(1, 1);
    reply("0a 43 00 00 01 00 00 ff", std::string("\x01\0", 2) + selRecord({1}));
    reply("0a 43 00 00 00 00 00 ff", std::string("\x01\0", 2) + selRecord({1}));
    EXPECT_EQ(list().status, EXIT_OK);
}

TEST_F(SelTest, SaysThatTheLogWasFull) {
    put(0, 0);
    reply("0a 40", std::string("\x51\0\0\0\0\0\0\0\0\0\0\0\0\x80", 14));
    EXPECT_EQ(list().status, EXIT_OK);
    EXPECT_THAT(_notes, ElementsAre("The System Event Log was full: newer events are lost"));
}

TEST_F(SelTest, FindsNoLogWithAControllerThatKeepsNone) {
    _bmc.reply("06 01", "00 20 01 02 50 02 02 39 30 00 01 00");
    EXPECT_EQ(list().status, EXIT_NOT_FOUND);
    EXPECT_THAT(_notes, ElementsAre("The management controller keeps no System Event Log"));
}

TEST_F(SelTest, FindsNoController) {
    _bmc.vanish();
    const CommandResult result = list();
    EXPECT_EQ(result.status, EXIT_NOT_FOUND);
    EXPECT_EQ(result.text, "");
    EXPECT_THAT(_notes, ElementsAre(HasSubstr("No management controller: /")));
}

TEST_F(SelTest, RefusesAFormatOfInstances) {
    _request.format = "mof";
    EXPECT_THROW(list(), UsageError);
    EXPECT_THAT(_bmc.asked(), IsEmpty());
}
