// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// The command itself, with the test module.

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "CommandRun.h"
#include "MofParser.h"
#include "ScopedEnvironment.h"

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

CommandRun _run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--module", TEST_MODULE, "--schema", TEST_SCHEMA});
    return runCommandLine(std::move(arguments));
}

// A machine with nothing but folders.
class Machine {
public:
    Machine() { std::filesystem::create_directories(_folder.file("run")); }
    const std::string& path() const { return _folder.path(); }
    const TemporaryFolder& folder() const { return _folder; }

private:
    TemporaryFolder _folder;
};

}  // namespace

TEST(Program, WritesNothingButItsResultToStandardOutput) {
    const CommandRun run = _run({"list", "TEST_Prints", "--format", "json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Json::parse(run.out).size(), 1U);
    EXPECT_EQ(run.err, "printed by the module\n");
}

TEST(Program, WritesEveryFormat) {
    EXPECT_THAT(_run({"list", "TEST_Several"}).out, StartsWith("Number  Name\n"));
    EXPECT_THAT(_run({"list", "TEST_Several", "--format", "csv"}).out,
                StartsWith("path,Number,Name\r\n"));
    const std::string mof = _run({"list", "TEST_Several", "--format", "mof"}).out;
    EXPECT_EQ(QZ::parseMof(mof, "out").instances.size(), 2U);
    EXPECT_EQ(Json::parse(_run({"names", "TEST_Several", "--format", "json"}).out)[1],
              "root/tavqz:TEST_Several.Number=2");
    EXPECT_EQ(_run({"names", "TEST_Several"}).out,
              "root/tavqz:TEST_Several.Number=1\nroot/tavqz:TEST_Several.Number=2\n");
    EXPECT_EQ(Json::parse(_run({"classes", "--format", "json"}).out)[0]["name"], "TEST_Everything");
}

TEST(Program, GetsWhatNamesWrites) {
    const CommandRun run = _run({"get", "root/tavqz:TEST_Prints.Id=\"one\"", "--format", "json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Json::parse(run.out)[0]["properties"]["Id"], "one");
}

TEST(Program, TellsAMissingInstanceFromAFailure) {
    const CommandRun missing = _run({"get", "TEST_Prints.Id=\"missing\""});
    EXPECT_EQ(missing.status, 3);
    EXPECT_EQ(missing.out, "");
    EXPECT_THAT(missing.err, StartsWith("tavqz: CIM_ERR_NOT_FOUND (6)"));
    const CommandRun failed = _run({"get", "TEST_ThrowsCim.Id=\"one\""});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, "tavqz: CIM_ERR_ACCESS_DENIED (2): not today\n");
}

TEST(Program, NamesTheStatusThatTheServerRefusesWith) {
    const CommandRun run = _run({"list", "TEST_Unheard"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tavqz: CIM_ERR_INVALID_CLASS (5): TEST_Unheard\n");
    EXPECT_EQ(_run({"set", "TEST_Unheard", "A=1"}).status, 1);
    EXPECT_EQ(_run({"list", "TEST_ThrowsNumber"}).status, 1);
}

TEST(Program, RefusesWrongUsage) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"list", "no class"},
                                                      {"get", "TEST_Several"},
                                                      {"get", "TEST_Several.Number"},
                                                      {"get", "\xFF.A=1"},
                                                      {"set", "TEST_Settings", "Absent=1"},
                                                      {"set", "TEST_Settings", "Fixed=1"},
                                                      {"set", "TEST_Settings", "U8=256"},
                                                      {"set", "TEST_Several", "Number=1"},
                                                      {"report", "--root", "/missing/folder"},
                                                      {"dance"}}) {
        const CommandRun run = _run(arguments);
        EXPECT_EQ(run.status, 2) << arguments.back();
        EXPECT_EQ(run.out, "") << arguments.back();
        EXPECT_NE(run.err, "") << arguments.back();
    }
}

TEST(Program, SetsWhatIsNamedAndWhatBelongsToIt) {
    TemporaryFolder folder;
    const ScopedEnvironment file("TAVQZ_TEST_MODIFIED", folder.file("modified"));
    const CommandRun run = _run({"set", "TEST_Settings", "text=a b", "Moment="});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(folder.read("modified"),
              "root/tavqz:TEST_Settings.Id=\"one\"\n"
              "Text, Moment, First, Second\n"
              "Text string a b\n"
              "Moment datetime 00000000000000.000000:000\n"
              "First string one\n"
              "Second string two\n");
}

TEST(Program, SetsTheInstanceOfAPath) {
    const TemporaryFolder folder;
    const ScopedEnvironment file("TAVQZ_TEST_MODIFIED", folder.file("modified"));
    const CommandRun run = _run({"set", "TEST_Settings.Id=\"one\"", "U8=3"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(folder.read("modified"), StartsWith("root/tavqz:TEST_Settings.Id=\"one\"\nU8, "));
    const CommandRun missing = _run({"set", "TEST_Settings.Id=\"missing\"", "U8=3"});
    EXPECT_EQ(missing.status, 3);
    EXPECT_THAT(missing.err, StartsWith("tavqz: CIM_ERR_NOT_FOUND (6)"));
}

TEST(Program, CreatesAnInstanceAndWritesItsPath) {
    const TemporaryFolder folder;
    const ScopedEnvironment file("TAVQZ_TEST_MODIFIED", folder.file("created"));
    const CommandRun run = _run({"create", "test_several", "Number=9", "name=a=b"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "root/tavqz:TEST_Several.Number=9\n");
    EXPECT_EQ(folder.read("created"),
              "root/tavqz:TEST_Several\nNULL\nNumber uint16 9\nName string a=b\n");
    EXPECT_EQ(_run({"create", "TEST_Several", "Name=x"}).status, 2) << "without its key";
    EXPECT_EQ(_run({"create", "TEST_Several", "Number=9", "Number=8"}).status, 2);
    EXPECT_EQ(_run({"create", "TEST_Several", "Absent=9"}).status, 2);
    EXPECT_EQ(_run({"create", "TEST_Unheard", "Id=9"}).status, 1);
}

TEST(Program, DeletesAnInstance) {
    const TemporaryFolder folder;
    const ScopedEnvironment file("TAVQZ_TEST_MODIFIED", folder.file("deleted"));
    const CommandRun run = _run({"delete", "TEST_Settings.Id=\"one\""});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(folder.read("deleted"), "root/tavqz:TEST_Settings.Id=\"one\"\nNULL\n");
    EXPECT_EQ(_run({"delete", "TEST_Settings.Id=\"missing\""}).status, 3);
    EXPECT_EQ(_run({"delete", "TEST_Settings"}).status, 2) << "never all of a class";
}

TEST(Program, RefusesToSetWhereThereIsNotOneInstance) {
    TemporaryFolder schema;
    schema.write("a.mof",
                 "Qualifier Write : boolean = false, Scope(property);"
                 "class TEST_Several { [Write] string Name; };");
    schema.write("b.mof",
                 "instance of PG_ProviderModule { Name = \"M\"; Location = \"L\"; };"
                 "instance of PG_Provider { ProviderModuleName = \"M\"; Name = "
                 "\"TestProvider\"; };"
                 "instance of PG_ProviderCapabilities { ProviderModuleName = \"M\"; "
                 "ProviderName = \"TestProvider\"; ClassName = \"TEST_Several\"; "
                 "Namespaces = {\"root/tavqz\"}; ProviderType = {2}; };");
    const CommandRun run = runCommandLine(
        {"set", "TEST_Several", "Name=x", "--module", TEST_MODULE, "--schema", schema.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("2 instances"));
}

TEST(Program, ReportsAndNamesWhatItHasToDoWithout) {
    const Machine machine;
    // Of its own, so that the product's are not looked for.
    const ScopedEnvironment trusted("TAVQZ_HOST_LIBRARIES", "1");
    std::filesystem::create_directory(machine.folder().file("lib"));
    const CommandRun run = _run({"--root", machine.path(), "report"});
    EXPECT_EQ(run.status, 1) << "classes that fail are a failure";
    EXPECT_THAT(run.out, HasSubstr("Settings\n========\n  Id         one\n  Some text  before\n"));
    EXPECT_THAT(run.err,
                HasSubstr("tavqz: TEST_ThrowsCim: CIM_ERR_ACCESS_DENIED (2): not today\n"));
    EXPECT_THAT(run.err, HasSubstr("tavqz: No SMBIOS tables: " + machine.path()));
    EXPECT_THAT(run.err, HasSubstr("tavqz: No data folder: " + machine.path() + "/var/lib/tavqz/"));
    EXPECT_THAT(run.err, HasSubstr("No service-processor library: ../lib/libtav_shrdevice.so"));
}

TEST(Program, LooksForLibrariesBesideAMachineWhoseOwnAreTrusted) {
    const Machine machine;
    machine.folder().write("lib/libtav_shrdevice.so", "x");
    const ScopedEnvironment trusted("TAVQZ_HOST_LIBRARIES", "1");
    const CommandRun run = _run({"--root", machine.path(), "report", "--format", "json"});
    EXPECT_THAT(run.err, testing::Not(HasSubstr("libtav_shrdevice")));
    EXPECT_GE(Json::parse(run.out).size(), 4U);
}

TEST(Program, SaysThatTheModuleCannotBeLoaded) {
    const CommandRun run = runCommandLine(
        {"list", "TEST_Several", "--module", "/missing/module.so", "--schema", TEST_SCHEMA});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("/missing/module.so"));
    EXPECT_EQ(runCommandLine({"classes", "--schema", "/missing"}).status, 1);
}

TEST(Program, FailsWhenStandardOutputCannotBeWritten) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    for (const char* argument : {"classes", "--help", "--version"}) {
        const CommandRun run = runCommandLine({argument}, full);
        EXPECT_EQ(run.status, 1) << argument;
        EXPECT_THAT(run.err, HasSubstr("Cannot write to standard output")) << argument;
    }
    close(full);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    EXPECT_EQ(runCommandLine({"classes"}, ends[1]).status, 1) << "the reader left";
    close(ends[1]);
}

TEST(Program, PrintsHelpAndVersionToStandardOutput) {
    const CommandRun help = runCommandLine({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("Subcommands:"));
    EXPECT_EQ(help.err, "");
    EXPECT_THAT(runCommandLine({"--version"}).out, StartsWith("tavqz "));
}
