// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "BuildPaths.h"
#include "CommandRun.h"
#include "ServeKeys.h"

namespace {

using Words = std::set<std::string>;

Words _matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    Words words;
    for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at) {
        words.insert((*at)[1]);
    }
    return words;
}

std::string _read(const char* file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string _manPage() {
    const std::string text = _read(TAVQZ_SOURCE_DIR "/docs/tavqz.1");
    // "\\-" is how a man page writes a plain hyphen.
    return std::regex_replace(text, std::regex(R"(\\-)"), "-");
}

constexpr const char* _option = R"((--[a-z][a-z-]+))";
// "  report      Lay out ..." of the help, ".SS report ..." of the page.
constexpr const char* _helpCommand = R"(\n  ([a-z]+) {4,})";
constexpr const char* _pageCommand = R"(\n\.SS ([a-z]+))";

}  // namespace

TEST(ManPage, NamesEveryCommandAndNoOther) {
    const Words commands = _matches(runCommandLine({"--help"}).out, _helpCommand);
    EXPECT_GE(commands.size(), 8U);
    EXPECT_EQ(_matches(_manPage(), _pageCommand), commands);
}

TEST(ManPage, NamesEveryOptionAndNoOther) {
    std::string help = runCommandLine({"--help"}).out;
    for (const std::string& command : _matches(help, _helpCommand)) {
        help += runCommandLine({command, "--help"}).out;
    }
    const Words options = _matches(help, _option);
    EXPECT_GE(options.size(), 6U);
    EXPECT_EQ(_matches(_manPage(), _option), options);
}

// As "\\-\\-port" and "5988" in the same entry, which ends with the next ".TP".
TEST(ManPage, SaysWhatServeDoesUnlessItIsToldOtherwise) {
    const std::string page = _manPage();
    for (const QZ::ServeKey& key : QZ::serveKeys()) {
        const std::size_t at = page.find(".SH SERVING");
        const std::size_t option = page.find("--" + key.name, at);
        const std::size_t entry = page.rfind(".TP", option);
        ASSERT_NE(std::string::npos, option) << key.name;
        EXPECT_THAT(page.substr(entry, page.find(".TP", option) - entry),
                    testing::HasSubstr(key.standard))
            << key.name;
    }
}

TEST(ManPage, ExplainsEachLineOfTheService) {
    const std::string unit = _read(TAVQZ_SOURCE_DIR "/packaging/debian/tavqz.service");
    const std::size_t begin = unit.find("[Service]");
    const Words lines =
        _matches(unit.substr(begin, unit.find("[Install]") - begin), R"(\n([A-Za-z]+)=)");
    EXPECT_GE(lines.size(), 30U);
    const std::string page = _manPage();
    const std::size_t section = page.find(".SH SERVICE");
    const std::string text = page.substr(section, page.find(".SH EXIT", section) - section);
    Words explained;
    for (const std::string& tagged : _matches(text, R"(\n\.TP\n\.BR? ([^\n]+))")) {
        explained.merge(_matches(tagged, "([A-Za-z]+)"));
    }
    EXPECT_EQ(explained, lines);
}

TEST(ManPage, NamesTheFormatsStatusesAndVariables) {
    const std::string page = _manPage();
    for (const char* word : {"table", "json", "csv", "mof", "TAVQZ_HOST_ROOT", "TAVQZ_DATA_DIR",
                             ".SH EXIT STATUS", ".SH EXAMPLES"}) {
        EXPECT_THAT(page, testing::HasSubstr(word));
    }
}

TEST(ManPage, NamesWhatACommandFindsOfAnAlert) {
    const std::string page = _manPage();
    for (const char* word : {"CLASS", "DESCRIPTION", "EVENT_ID", "PROVIDER", "SEVERITY",
                             "SEVERITY_NAME", "SYSTEM", "SYSTEM_ID", "TIME"}) {
        EXPECT_EQ(_matches(page, std::string("TAVQZ_ALERT_(") + word + ")[^A-Z_]").size(), 1U)
            << word;
    }
}
