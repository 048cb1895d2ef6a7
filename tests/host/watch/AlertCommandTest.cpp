// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertCommand.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <thread>

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "TestAlert.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

class AlertCommandTest : public ::testing::Test {
protected:
    std::string run(const std::string& command, const std::string& description = "It ran out.") {
        return AlertCommand(command, folder.path(), signals)
            .run(alertFields(testAlert(description), testClasses()));
    }

    TemporaryFolder folder;
    StopSignals signals;
};

}  // namespace

TEST_F(AlertCommandTest, FindsTheAlertInItsEnvironment) {
    const ScopedEnvironment stale("TAVQZ_ALERT_STALE", "1");
    const ScopedEnvironment own("TAVQZ_TEST_OWN", "kept");
    EXPECT_EQ(run("env | grep -E '^TAVQZ_(ALERT|TEST_OWN)' | LC_ALL=C sort > out"), "");
    EXPECT_EQ(folder.read("out"),
              "TAVQZ_ALERT_CLASS=TEST_First\n"
              "TAVQZ_ALERT_DESCRIPTION=It ran out.\n"
              "TAVQZ_ALERT_EVENT_ID=TEST_Record.Id=\"1\"\n"
              "TAVQZ_ALERT_PROVIDER=The provider\n"
              "TAVQZ_ALERT_SEVERITY=4\n"
              "TAVQZ_ALERT_SEVERITY_NAME=Minor\n"
              "TAVQZ_ALERT_SYSTEM=asset-host\n"
              "TAVQZ_ALERT_SYSTEM_ID=4711\n"
              "TAVQZ_ALERT_TIME=2027-01-31T12:03:05.250+01:00\n"
              "TAVQZ_TEST_OWN=kept\n");
}

TEST_F(AlertCommandTest, IsNotRunByWhatTheAlertSays) {
    EXPECT_EQ(run("printf %s \"$TAVQZ_ALERT_DESCRIPTION\" > out", "$(touch made) `touch made`;'"),
              "");
    EXPECT_EQ(folder.read("out"), "$(touch made) `touch made`;'");
    EXPECT_FALSE(folder.contains("made"));
}

TEST_F(AlertCommandTest, HasNoInputAndTheSignalsThatWeWereGiven) {
    EXPECT_EQ(run("cat > out; grep -E 'Sig(Blk|Ign)' /proc/self/status >> out"), "");
    EXPECT_THAT(folder.read("out"), testing::StartsWith("SigBlk:\t0000000000000000\n"));
    // SIGPIPE, which is 13, is not ignored although we do.
    EXPECT_EQ(run("kill -PIPE $$"), "--exec: the command was ended by signal 13");
}

TEST_F(AlertCommandTest, SaysWhatWentWrong) {
    EXPECT_EQ(run("exit 3"), "--exec: the command ended with 3");
    EXPECT_EQ(run("kill -KILL $$"), "--exec: the command was ended by signal 9");
    EXPECT_EQ(run("/missing/command 2>/dev/null"), "--exec: the command ended with 127");
    const AlertFields fields;
    EXPECT_THAT(AlertCommand("true", folder.file("missing"), signals).run(fields),
                HasSubstr("--exec: the command cannot be run: "));
    EXPECT_EQ(AlertCommand("true", "", signals).run(fields), "") << "where we are";
}

TEST_F(AlertCommandTest, PassesOnASignalToStopAndWaitsForTheEnd) {
    // It tells itself through a pipe that it is ready, so that nothing is a matter of time.
    ASSERT_EQ(mkfifo(folder.file("ready").c_str(), 0600), 0);
    std::thread stopping([this] {
        EXPECT_EQ(folder.read("ready"), "ready\n");
        kill(getpid(), SIGTERM);
    });
    EXPECT_EQ(run("trap 'echo told > out; exit 7' TERM; echo ready > ready; "
                  "while :; do sleep 0.01; done"),
              "--exec: the command ended with 7");
    stopping.join();
    EXPECT_EQ(folder.read("out"), "told\n");
    EXPECT_TRUE(signals.isToldToStop());
}
