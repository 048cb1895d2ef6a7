// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeConfig.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "BuildPaths.h"
#include "CommandLine.h"
#include "ServeKeys.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

std::string refusal(const std::string& text) {
    try {
        (void)parseServeConfig(text, "/etc/serve.conf");
    } catch (const UsageError& error) {
        return error.what();
    }
    return {};
}

TEST(ServeConfig, TakesKeysAsTheCommandLineDoes) {
    const ServeValues values = parseServeConfig(
        "# who may\n\n  credentials=users \r\nlisten = https://0.0.0.0\nlisten = [::1]:80\n"
        "\tallow-plain\t=\tyes",
        "/etc/tavqz/serve.conf");
    EXPECT_EQ((ServeValues{{"allow-plain", {"yes"}},
                           {"credentials", {"/etc/tavqz/users"}},
                           {"listen", {"https://0.0.0.0", "[::1]:80"}}}),
              values);
}

TEST(ServeConfig, NamesTheLineThatMakesNoSense) {
    EXPECT_EQ("/etc/serve.conf, line 3: there is no key \"listne\"",
              refusal("port = 1\n\nlistne = ::1\n"));
    EXPECT_EQ("/etc/serve.conf, line 1: port = VALUE is expected", refusal("port"));
    EXPECT_EQ("/etc/serve.conf, line 2: port has a value already", refusal("port=1\nport=2"));
    EXPECT_EQ("/etc/serve.conf, line 1: port: a number from 0 to 65535 is expected",
              refusal("port = http"));
    EXPECT_EQ("/etc/serve.conf, line 1: there is no key \"--port\"", refusal("--port = 1"));
    EXPECT_EQ("/etc/serve.conf, line 1: there is no key \"\"", refusal("= 1"));
}

TEST(ServeConfig, CountsLessThanTheCommandLine) {
    const TemporaryFolder folder;
    ServeArguments arguments;
    arguments.configFile = folder.write("serve.conf", "port = 1\nlisten = ::1\nuser = bob\n");
    arguments.values = {{"listen", {"127.0.0.1", "127.0.0.2"}}, {"port", {"2"}}};
    EXPECT_EQ(
        (ServeValues{{"listen", {"127.0.0.1", "127.0.0.2"}}, {"port", {"2"}}, {"user", {"bob"}}}),
        readServeValues(arguments));
}

TEST(ServeConfig, SaysWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    ServeArguments arguments;
    arguments.configFile = folder.file("serve.conf");
    EXPECT_THROW((void)readServeValues(arguments), Error);
    arguments.configFile = folder.path();
    EXPECT_THROW((void)readServeValues(arguments), Error);
}

// The file that is installed: "#port = 5988" is a key with its standard value.
TEST(ShippedConfig, HasEveryKeyWithItsStandardValue) {
    std::ifstream file(TAVQZ_SOURCE_DIR "/packaging/debian/serve.conf");
    std::set<std::string> left;
    for (const ServeKey& key : serveKeys()) {
        left.insert(key.name);
    }
    for (std::string line; std::getline(file, line);) {
        const bool isKey = !line.empty() && line.find("# ") != 0 && line != "#";
        if (!isKey) {
            continue;
        }
        const bool isStandard = line[0] == '#';
        for (const auto& [name, values] : parseServeConfig(line.substr(isStandard ? 1 : 0), "/a")) {
            left.erase(name);
            const std::string& standard = findServeKey(name)->standard;
            EXPECT_TRUE(!isStandard || standard.empty() || standard == values.front()) << line;
        }
    }
    EXPECT_EQ(std::set<std::string>{}, left);
}

TEST(ShippedConfig, LetsTheUserOfTheInstallationIn) {
    ServeArguments arguments;
    arguments.configFile = TAVQZ_SOURCE_DIR "/packaging/debian/serve.conf";
    EXPECT_EQ((ServeValues{{"password-file", {"/etc/tavqz/password"}}}),
              readServeValues(arguments));
}

}  // namespace
}  // namespace QZ
