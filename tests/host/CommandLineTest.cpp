// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "ScopedEnvironment.h"

using namespace QZ;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

ParsedArguments _parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "tavqz");
    return parseArguments(int(arguments.size()), arguments.data());
}

}  // namespace

TEST(CommandLine, TakesGlobalOptionsBeforeAndBehindTheCommand) {
    for (const auto& parsed : {_parse({"--root", "/r", "--format", "json", "list", "A"}),
                               _parse({"list", "A", "--format", "json", "--root", "/r"}),
                               _parse({"--root=/r", "list", "--format=json", "A"})}) {
        ASSERT_TRUE(parsed.isRequest) << parsed.text;
        EXPECT_EQ(parsed.request.command, Request::List);
        EXPECT_EQ(parsed.request.subject, "A");
        EXPECT_EQ(parsed.request.root, "/r");
        EXPECT_EQ(parsed.request.format, "json");
    }
}

TEST(CommandLine, TakesAssignments) {
    const ParsedArguments parsed = _parse({"set", "A", "P=1", "Q=x y", "R="});
    ASSERT_TRUE(parsed.isRequest) << parsed.text;
    EXPECT_EQ(parsed.request.command, Request::Set);
    EXPECT_EQ(parsed.request.subject, "A");
    EXPECT_THAT(parsed.request.assignments, ElementsAre("P=1", "Q=x y", "R="));
}

TEST(CommandLine, ReadsTheEnvironmentWhereNoOptionIsGiven) {
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", "/env/root");
    const ScopedEnvironment data("TAVQZ_DATA_DIR", "/env/data");
    EXPECT_EQ(_parse({"report"}).request.root, "/env/root");
    EXPECT_EQ(_parse({"report"}).request.dataFolder, "/env/data");
    EXPECT_EQ(_parse({"report", "--root", "/r", "--data-dir", "/d"}).request.root, "/r");
    EXPECT_EQ(_parse({"report", "--data-dir", "/d"}).request.dataFolder, "/d");
}

TEST(CommandLine, TakesWhomToTrustOverHttps) {
    const Request named = _parse({"report", "--cacert", "/ca.pem"}).request;
    EXPECT_EQ(named.authorityFile, "/ca.pem");
    EXPECT_FALSE(named.acceptsAnyCertificate);
    EXPECT_EQ(_parse({"serve", "--cacert", "ca.pem"}).request.authorityFile,
              std::filesystem::absolute("ca.pem").string());
    const ParsedArguments any = _parse({"report", "--accept-any-certificate"});
    EXPECT_TRUE(any.isRequest && any.request.acceptsAnyCertificate);
    EXPECT_FALSE(_parse({"serve", "--accept-any-certificate"}).isRequest);
    EXPECT_FALSE(_parse({"report", "--accept-any-certificate", "--cacert", "/ca.pem"}).isRequest);
}

TEST(CommandLine, PrintsHelpAndVersion) {
    const ParsedArguments help = _parse({"--help"});
    EXPECT_FALSE(help.isRequest);
    EXPECT_EQ(help.status, EXIT_OK);
    EXPECT_THAT(help.text, HasSubstr("Exit status:"));
    EXPECT_THAT(help.text, HasSubstr("Examples:"));
    EXPECT_THAT(_parse({"set", "--help"}).text, HasSubstr("2027-01-31"));
    EXPECT_THAT(_parse({"--version"}).text, testing::MatchesRegex("tavqz [0-9.]+\n"));
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
    for (const auto& parsed :
         {_parse({}), _parse({"dance"}), _parse({"list"}), _parse({"set", "A"}),
          _parse({"list", "A", "B"}), _parse({"report", "--format", "xml"}),
          _parse({"report", "--loud"}), _parse({"report", "list", "A"})}) {
        EXPECT_FALSE(parsed.isRequest);
        EXPECT_EQ(parsed.status, EXIT_USAGE);
        EXPECT_NE(parsed.text, "");
    }
}
