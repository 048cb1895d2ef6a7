// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServerTools.h"

#include <gmock/gmock.h>

#include "Error.h"
#include "PegasusServer.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "ToolRun.h"

using namespace QZ;

namespace {

void _makeProgram(const TemporaryFolder& folder, const std::string& name) {
    std::filesystem::permissions(folder.write(name, "#!/bin/sh\n"),
                                 std::filesystem::perms::owner_all);
}

}  // namespace

TEST(ServerTools, LooksBesideTheCompilerThenInTheServersHomeThenInThePath) {
    const TemporaryFolder folder;
    const ScopedEnvironment home("PEGASUS_HOME", folder.file("home"));
    const ScopedEnvironment path("PATH", folder.file("path"));
    _makeProgram(folder, "path/cimcli");
    EXPECT_EQ(ServerTools("").path("cimcli"), folder.file("path/cimcli"));
    _makeProgram(folder, "home/bin/cimcli");
    EXPECT_EQ(ServerTools("").path("cimcli"), folder.file("home/bin/cimcli"));
    _makeProgram(folder, "named/cimcli");
    const ServerTools named(folder.file("named/cimmof-2.14"));
    EXPECT_EQ(named.path("cimcli"), folder.file("named/cimcli"));
    EXPECT_EQ(named.path("cimmof"), folder.file("named/cimmof-2.14"));
}

TEST(ServerTools, PassesOverWhatCannotBeRun) {
    const TemporaryFolder folder;
    const ScopedEnvironment home("PEGASUS_HOME", nullptr);
    const ScopedEnvironment path("PATH", folder.file("first") + "::" + folder.file("second"));
    (void)folder.write("first/cimcli", "");
    _makeProgram(folder, "second/cimcli");
    EXPECT_EQ(ServerTools("").path("cimcli"), folder.file("second/cimcli"));
}

TEST(ServerTools, NamesTheProgramThatIsMissing) {
    const ScopedEnvironment home("PEGASUS_HOME", nullptr);
    try {
        (void)ServerTools("").path("cimmof-of-no-server");
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(
            error.what(),
            "There is no cimmof-of-no-server here: install the OpenPegasus server, or name "
            "its cimmof with --cimmof");
    }
}

TEST(ToolRun, HasWhatItPrintedAndItsStatus) {
    const ToolRun run = runTool({"/bin/sh", "-c", "echo said; echo \"wrong\" >&2; cat; exit 7"});
    EXPECT_EQ(run.text, "said\nwrong");
    EXPECT_EQ(run.status, 7);
    EXPECT_EQ(runTool({"/bin/sh", "-c", "kill -9 $$"}).status, 137);
    EXPECT_THROW((void)runTool({"/no/such/program"}), Error);
}

TEST(ToolRun, DoesNotWaitForWhatIsLeftBehind) {
    const ToolRun run = runTool({"/bin/sh", "-c", "(cat /dev/zero >/dev/null) & echo $!"});
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(runTool({"/bin/sh", "-c", "kill " + run.text}).status, 0);
}

TEST(ToolRun, WritesACommandAsAShellTakesIt) {
    EXPECT_EQ(commandText({"/bin/cimcli", "di", "A.B=\"c\"", "it's", ""}),
              "/bin/cimcli di 'A.B=\"c\"' 'it'\\''s' ''");
}

TEST(PegasusServer, FindsWhatAModelDeclares) {
    const std::string mof =
        "Qualifier Key : boolean = false,\n    Scope(property);\n"
        "[Description(\"class\")]\nclass A : B {\n    string class_;\n};\n// class C\nclass D{ "
        "};\n";
    EXPECT_THAT(declaredNames(mof, "class"), testing::ElementsAre("A", "D"));
    EXPECT_THAT(declaredNames(mof, "Qualifier"), testing::ElementsAre("Key"));
}
