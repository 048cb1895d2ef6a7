// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeConfig.h"

#include <gtest/gtest.h>

#include "CommandLine.h"
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

}  // namespace
}  // namespace QZ
