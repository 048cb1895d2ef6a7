// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PrintedLines.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <iostream>
#include <mutex>
#include <vector>

#include "Streams.h"

namespace QZ {
namespace {

using testing::ElementsAre;

class PrintedLinesTest : public testing::Test {
protected:
    PrintedLines::Take keep() {
        return [this](const std::string& line) {
            const std::lock_guard<std::mutex> lock(_mutex);
            _lines.push_back(line);
            _came.notify_all();
        };
    }
    // The lines that came, once there are so many.
    std::vector<std::string> lines(std::size_t count) {
        std::unique_lock<std::mutex> lock(_mutex);
        _came.wait_for(lock, std::chrono::seconds(10), [&] { return _lines.size() >= count; });
        return _lines;
    }

    const Streams streams;

private:
    std::mutex _mutex;
    std::condition_variable _came;
    std::vector<std::string> _lines;
};

TEST_F(PrintedLinesTest, AreTakenFromWhoeverPrints) {
    PrintedLines printed;
    printed.take(keep());
    std::printf("about to load\n\nthe %s\n", "library");
    EXPECT_THAT(lines(2), ElementsAre("about to load", "the library"));
    std::cerr << "and "
              << "more" << std::endl;
    EXPECT_THAT(lines(3), ElementsAre("about to load", "the library", "and more"));
    printed.release();
    EXPECT_EQ("", streams.text());
}

TEST_F(PrintedLinesTest, NeedNoEndToBeSeen) {
    PrintedLines printed;
    printed.take(keep());
    std::printf("\nabout to open");
    EXPECT_THAT(lines(1), ElementsAre("about to open"));
}

TEST_F(PrintedLinesTest, GoWhereTheyWentOnceTheyAreReleased) {
    PrintedLines printed;
    printed.take(keep());
    std::printf("before");
    printed.release();
    EXPECT_THAT(lines(1), ElementsAre("before")) << "nothing is lost";
    std::printf("after\n");
    EXPECT_EQ("after\n", streams.text());
    printed.take(keep());
    std::printf("again\n");
    EXPECT_THAT(lines(2), ElementsAre("before", "again"));
}

TEST_F(PrintedLinesTest, LeaveOurOwnAlone) {
    PrintedLines printed;
    printed.take([&printed](const std::string& line) { printed.write("<" + line + ">"); });
    std::printf("%s\n", std::string(100'000, 'x').c_str());
    printed.write("ours");
    printed.release();
    const std::string text = streams.text();
    EXPECT_THAT(text, testing::HasSubstr("ours\n"));
    EXPECT_EQ(100'000, std::count(text.begin(), text.end(), 'x'));
}

}  // namespace
}  // namespace QZ
