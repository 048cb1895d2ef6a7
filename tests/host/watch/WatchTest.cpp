// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Watch.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include "Error.h"
#include "TemporaryFolder.h"
#include "TestAlert.h"

using namespace QZ;
using namespace Pegasus;

namespace {

// Raises what a test wants, and says so when it is stopped.
class TestSource : public AlertSource {
public:
    std::function<void(const Take& take)> onStart = [](const Take&) {};
    std::function<void(const Take& take)> onStop = [](const Take&) {};
    int stops = 0;

    void start(Take take) override {
        _take = std::move(take);
        _thread = std::thread([this] { onStart(_take); });
    }
    void stop() noexcept override {
        _thread.join();
        onStop(_take);
        ++stops;
    }

private:
    Take _take;
    std::thread _thread;
};

class WatchTest : public ::testing::Test {
protected:
    WatchTest() { request.command = Request::Watch; }

    // What is written, without times and severities.
    std::string watched() {
        std::string written;
        EXPECT_EQ(EXIT_OK, watch(request, source, placeFor([&](const std::string& text) {
                                     written += text.substr(text.find(": ") + 2);
                                 })));
        EXPECT_EQ(source.stops, 1);
        return written;
    }
    WatchPlace placeFor(std::function<void(const std::string& text)> write) {
        return {schema, folder.path(), std::move(write),
                [this](const std::string& line) { noted += line + "\n"; }};
    }

    const Schema schema = Schema::load(TEST_SCHEMA);
    TemporaryFolder folder;
    Request request;
    TestSource source;
    std::string noted;
};

void _stop() {
    kill(getpid(), SIGTERM);
}

}  // namespace

TEST_F(WatchTest, ShowsAlertsUntilItIsToldToStop) {
    source.onStart = [](const AlertSource::Take& take) {
        take(testAlert("first"));
        take(testAlert("second"));
        _stop();
    };
    EXPECT_EQ(watched(), "first\nsecond\n");
}

TEST_F(WatchTest, WritesEachAlertBeforeItWaitsForTheNext) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    source.onStart = [&](const AlertSource::Take& take) {
        char written = 0;
        for (const char* text : {"first", "second"}) {
            take(testAlert(text));
            EXPECT_EQ(read(ends[0], &written, 1), 1);
            EXPECT_EQ(written, *text);
        }
        _stop();
    };
    watch(request, source, placeFor([&](const std::string& text) {
              EXPECT_EQ(::write(ends[1], text.data() + text.find(": ") + 2, 1), 1);
          }));
    close(ends[0]);
    close(ends[1]);
}

TEST_F(WatchTest, EndsAfterSoManyAlerts) {
    request.watch.count = 2;
    source.onStart = [](const AlertSource::Take& take) {
        take(testAlert("first"));
        take(testAlert("second"));
    };
    EXPECT_EQ(watched(), "first\nsecond\n");
}

TEST_F(WatchTest, LosesNothingThatIsRaisedWhileItEnds) {
    request.watch.count = 1;
    source.onStart = [](const AlertSource::Take& take) {
        take(testAlert("first"));
        take(testAlert("with it"));
    };
    source.onStop = [](const AlertSource::Take& take) { take(testAlert("last")); };
    EXPECT_EQ(watched(), "first\nwith it\nlast\n");
}

TEST_F(WatchTest, HandsEachAlertToTheCommandInOrder) {
    request.watch.count = 3;
    request.watch.command =
        "echo \"began $TAVQZ_ALERT_DESCRIPTION\" >> out; sleep 0.02; echo ended >> out; "
        "test \"$TAVQZ_ALERT_DESCRIPTION\" != second";
    source.onStart = [](const AlertSource::Take& take) {
        for (const char* text : {"first", "second", "third"}) {
            take(testAlert(text));
        }
    };
    EXPECT_EQ(watched(), "first\nsecond\nthird\n") << "a failure ends nothing";
    EXPECT_EQ(folder.read("out"), "began first\nended\nbegan second\nended\nbegan third\nended\n");
    EXPECT_EQ(noted, "--exec: the command ended with 1\n");
}

TEST_F(WatchTest, EndsWhenItIsToldToWhileACommandRuns) {
    request.watch.command = "kill -TERM $PPID; exec sleep 1000";
    source.onStart = [](const AlertSource::Take& take) { take(testAlert("first")); };
    EXPECT_EQ(watched(), "first\n");
    EXPECT_EQ(noted, "--exec: the command was ended by signal 15\n");
}

TEST_F(WatchTest, StopsTheSourceWhereItCannotWrite) {
    source.onStart = [](const AlertSource::Take& take) { take(testAlert("first")); };
    EXPECT_THROW(
        watch(request, source, placeFor([](const std::string&) { throw Error("no reader"); })),
        Error);
    EXPECT_EQ(source.stops, 1);
}

TEST_F(WatchTest, EndsWithWhatKeepsTheSourceFromStarting) {
    class Refusing : public AlertSource {
        void start(Take) override { throw Error("nobody"); }
        void stop() noexcept override { ADD_FAILURE(); }
    };
    Refusing refusing;
    EXPECT_THROW(watch(request, refusing, placeFor([](const std::string&) {})), Error);
}
