// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeLog.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include "Streams.h"

namespace QZ {
namespace {

using testing::ElementsAre;

class ServeLogTest : public testing::Test {
protected:
    // Of the objects that were written, one a line, what each says.
    std::vector<std::string> messages() const {
        std::vector<std::string> all;
        std::istringstream lines(streams.text());
        for (std::string line; std::getline(lines, line);) {
            const auto object = nlohmann::json::parse(line);
            all.push_back(object.at(object.contains("message") ? "message" : "operation"));
        }
        return all;
    }
    static HttpLogRecord record() {
        HttpLogRecord record;
        record.text = "GetInstance";
        return record;
    }

    const Streams streams;
    std::vector<std::string> text;
    ServeLog log{[this](const std::string& line) { text.push_back(line); }};
};

TEST_F(ServeLogTest, WritesInTheFormThatItWasToldLast) {
    log.message("a");
    log.setJson(true);
    log.request(record());
    log.message("b");
    log.setJson(false);
    log.message("c");
    EXPECT_THAT(text, ElementsAre("a", "c"));
    EXPECT_THAT(messages(), ElementsAre("GetInstance", "b"));
}

TEST_F(ServeLogTest, MakesObjectsOfWhatOthersPrint) {
    log.setJson(true);
    std::printf("about to load library [../lib/libtav_shrdevice.so]\n");
    (void)std::fprintf(stderr, "\xff\x1b[2J\n");
    log.setJson(false);
    EXPECT_THAT(messages(), ElementsAre("about to load library [../lib/libtav_shrdevice.so]",
                                        "\xef\xbf\xbd\x1b[2J"));
}

TEST_F(ServeLogTest, LeavesWhatOthersPrintToPeopleAsItIs) {
    log.setJson(true);
    log.setJson(false);
    std::printf("about to load\n");
    EXPECT_EQ("about to load\n", streams.text());
}

}  // namespace
}  // namespace QZ
