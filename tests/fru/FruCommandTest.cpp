// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "BuildPaths.h"
#include "CommandRun.h"

using testing::HasSubstr;
using testing::Not;

namespace {

const std::string _machine = TAVQZ_SOURCE_DIR "/tests/machines/bare";
const std::string _header = "FRUNumber,IdentifyingNumber,Vendor,Name,Description\r\n";

using Arguments = std::vector<std::string>;

class FruCommandTest : public testing::Test {
protected:
    CommandRun run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(),
                         {"--root", _machine, "--data-dir", folder.file("data"), "fru"});
        return runCommandLine(arguments);
    }

    std::string printed(const std::vector<std::string>& arguments, int status = 0) const {
        const CommandRun done = run(arguments);
        EXPECT_EQ(status, done.status) << done.err;
        return status == 0 ? done.out : done.err;
    }

    void add(const std::string& number, const std::string& name,
             const std::string& vendor = "Acme") {
        printed({"add", "FRUNumber=" + number, "IdentifyingNumber=7", "Vendor=" + vendor,
                 "Name=" + name});
    }

    const TemporaryFolder folder;
};

}  // namespace

TEST_F(FruCommandTest, WritesThePathOfWhatItAdds) {
    EXPECT_EQ("root/tavqz:TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\"\n",
              printed({"add", "FRUNumber=39M4", "IdentifyingNumber=7", "Vendor=Acme"}));
    EXPECT_THAT(printed({"add", "FRUNumber=39M4", "IdentifyingNumber=7", "Vendor=Acme"}, 1),
                HasSubstr("CIM_ERR_ALREADY_EXISTS"));
    EXPECT_THAT(printed({"add", "FRUNumber=39M4", "Vendor=Acme"}, 2),
                HasSubstr("IdentifyingNumber"));
}

TEST_F(FruCommandTest, MarksWhatIsRecorded) {
    add("39M4", "Fan");
    const std::string json = printed({"list", "--format", "json"});
    EXPECT_THAT(json, HasSubstr("\"Recorded\": true"));
    EXPECT_THAT(json, HasSubstr("\"ElementName\": \"GETFRU\""));
}

TEST_F(FruCommandTest, LoadsTheOtherModulesBesideOneThatIsNamed) {
    const std::string module = TAVQZ_BINARY_DIR "/lib/libAssetIDProvider.so";
    const std::string rack = TAVQZ_SOURCE_DIR "/tests/machines/rack-server";
    const CommandRun done =
        runCommandLine({"--module", module, "--root", rack, "--data-dir", folder.file("data"),
                        "list", "TAVIRA_RAIDController", "--format", "json"});
    EXPECT_EQ(0, done.status) << done.err;
    EXPECT_THAT(done.out, HasSubstr("0000:03:00.0"));
}

TEST_F(FruCommandTest, ListsWhatTheProviderOfRaidTells) {
    const std::string rack = TAVQZ_SOURCE_DIR "/tests/machines/rack-server";
    const auto list = [&](const char* what) {
        return runCommandLine({"--root", rack, "--data-dir", folder.file("data"), "list", what,
                               "--format", "csv"})
            .out;
    };
    EXPECT_THAT(list("TAVIRA_RAIDController"), HasSubstr("0000:04:00.0"));
    const std::string units = list("TAVIRA_FRU");
    EXPECT_THAT(units, HasSubstr("6SJ0042B"));
    EXPECT_THAT(units, HasSubstr("03-25420-09A"));
    EXPECT_THAT(units, HasSubstr("in enclosure slot Slot 05"));
}

TEST_F(FruCommandTest, EditsAUnitByItsNumber) {
    add("39M4", "Fan");
    EXPECT_EQ("", printed({"edit", "39M4", "Name=Fan, left"}));
    EXPECT_EQ(_header + "39M4,7,Acme,\"Fan, left\",\r\n", printed({"export"}));
    EXPECT_THAT(printed({"edit", "39M4", "Vendor=Other"}, 2), HasSubstr("read-only"));
    EXPECT_THAT(printed({"edit", "39M5", "Name=Fan"}, 3), HasSubstr("39M5"));
}

TEST_F(FruCommandTest, TellsUnitsOfOneNumberApartByTheirPaths) {
    add("39M4", "Fan");
    add("39M4", "Pump", "Other");
    EXPECT_THAT(printed({"remove", "39M4"}, 2), HasSubstr("Several"));
    EXPECT_EQ("", printed({"remove",
                           "TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\","
                           "Vendor=\"Other\""}));
    EXPECT_EQ(_header + "39M4,7,Acme,Fan,\r\n", printed({"export"}));
    EXPECT_EQ("", printed({"remove", "39M4"}));
    EXPECT_THAT(printed({"remove", "39M4"}, 3), HasSubstr("fru list"));
}

TEST_F(FruCommandTest, KnowsAPathHoweverItIsWritten) {
    const char* const paths[] = {
        "tavira_fru.Vendor=\"Acme\",IdentifyingNumber=\"7\",frunumber=\"39M4\"",
        "root/tavqz:TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\"",
        "//far/root/tavqz:TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\""};
    for (const char* const path : paths) {
        add("39M4", "Fan");
        EXPECT_EQ("", printed({"remove", path})) << path;
    }
    add("39M4", "Fan");
    for (const char* const other :
         {"TAVIRA_Fan.FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\"",
          "root/other:TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\"",
          "TAVIRA_FRU.FRUNumber=\"39M4\"", "TAVIRA_FRU"}) {
        EXPECT_THAT(printed({"remove", other}, 3), HasSubstr("is recorded")) << other;
    }
}

TEST_F(FruCommandTest, KnowsAPathThatWasWrittenByHandWithoutItsNamespace) {
    add("39M4", "Fan");
    std::string text = folder.read("data/fru.dat");
    const std::string space = "namespace \"root/tavqz\"; ";
    text.erase(text.find(space), space.size());
    folder.write("data/fru.dat", text);
    EXPECT_EQ("", printed({"remove",
                           "root/tavqz:TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\","
                           "Vendor=\"Acme\""}));
}

TEST_F(FruCommandTest, TakesANumberForOneWhateverItsCharacters) {
    for (const char* const number : {"A=1", "x.y=\"z\"", "TAVIRA_FRU.FRUNumber=", "//h/n:c", ""}) {
        add(number, "Fan");
        EXPECT_EQ("", printed({"edit", number, "Name=Pump"})) << number;
        EXPECT_EQ("", printed({"remove", number})) << number;
    }
}

TEST_F(FruCommandTest, EditsAndRemovesWhatWasChangedByHand) {
    add("39M4", "Fan");
    const std::string once = folder.read("data/fru.dat");
    std::string changed = "// Was 39M4.\n\n" + once;
    const std::string property = " string FRUNumber = \"39M4";
    changed.replace(changed.rfind(property), property.size(), " string FRUNumber = \"39M9");
    folder.write("data/fru.dat", changed);
    EXPECT_EQ("", printed({"edit", "39M9", "Name=Pump"}));
    EXPECT_EQ(_header + "39M9,7,Acme,Pump,\r\n", printed({"export"}));
    folder.write("data/fru.dat", changed);
    EXPECT_EQ("", printed({"remove", "39M9"}));
    folder.write("data/fru.dat", once + once);
    EXPECT_EQ("", printed({"edit", "39M4", "Name=Pump"}));
    EXPECT_EQ(_header + "39M4,7,Acme,Pump,\r\n", printed({"export"}));
    folder.write("data/fru.dat", once + once);
    EXPECT_EQ("", printed({"remove", "39M4"}));
    EXPECT_EQ(_header, printed({"export"}));
}

TEST_F(FruCommandTest, ImportsWhatItExported) {
    add("39M4", "Fan \"left\"");
    add("39M5", "Pump");
    const std::string exported = printed({"export"});
    const std::string file = folder.write("units.csv", exported);
    EXPECT_EQ("", printed({"import", file}));
    printed({"remove", "39M4"});
    printed({"edit", "39M5", "Name=Other"});
    const std::string changes =
        "add FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\" Name: \"\" -> "
        "\"Fan \"left\"\"\n"
        "edit FRUNumber=\"39M5\",IdentifyingNumber=\"7\",Vendor=\"Acme\" Name: \"Other\" -> "
        "\"Pump\"\n";
    EXPECT_EQ(changes, printed({"import", file, "--dry-run"}));
    EXPECT_EQ(changes, printed({"import", file, "--dry-run"}));
    EXPECT_EQ(changes, printed({"import", file}));
    EXPECT_EQ("", printed({"import", file}));
    // The one that was added anew is now the last.
    EXPECT_EQ(exported.size(), printed({"export"}).size());
}

TEST_F(FruCommandTest, ImportsNothingOfAFileThatIsWrong) {
    const std::string file =
        folder.write("units.csv", _header + "39M4,7,Acme,Fan,\r\n39M5,7,Acme\r\n");
    EXPECT_THAT(printed({"import", file}, 1), HasSubstr("units.csv, line 3: 3 cells under 5"));
    EXPECT_EQ(_header, printed({"export"}));
    EXPECT_THAT(printed({"import", folder.file("none.csv")}, 1), HasSubstr("No such file"));
}

TEST_F(FruCommandTest, FailsWhereItCannotReadWhatIsRecorded) {
    const std::string file = folder.write("units.csv", _header + "39M4,7,Acme,Fan,\r\n");
    std::filesystem::create_directory(folder.file("data"));
    // No user may open it, root neither.
    std::filesystem::create_symlink("fru.dat", folder.file("data/fru.dat"));
    for (const Arguments& arguments : {Arguments{"export"},
                                       {"import", file},
                                       {"import", file, "--dry-run"},
                                       {"remove", "39M4"},
                                       {"edit", "39M4", "Name=Fan"}}) {
        const CommandRun done = run(arguments);
        EXPECT_EQ(1, done.status) << arguments.front();
        EXPECT_EQ("", done.out);
        EXPECT_THAT(done.err, HasSubstr("Cannot read " + folder.file("data/fru.dat")));
    }
}

TEST_F(FruCommandTest, ListsTheOtherUnitsWhereItCannotReadWhatIsRecorded) {
    std::filesystem::create_directory(folder.file("data"));
    std::filesystem::create_symlink("fru.dat", folder.file("data/fru.dat"));
    const std::string rack = TAVQZ_SOURCE_DIR "/tests/machines/rack-server";
    const CommandRun done = runCommandLine(
        {"--root", rack, "--data-dir", folder.file("data"), "fru", "list", "--format", "csv"});
    EXPECT_EQ(1, done.status);
    EXPECT_THAT(done.out, HasSubstr("6SJ0042B"));
    EXPECT_THAT(done.err, HasSubstr("Cannot read " + folder.file("data/fru.dat")));
}

TEST_F(FruCommandTest, StopsAnImportAtTheFirstRowThatTheStoreCannotTake) {
    add("39M4", "Fan");
    // Which lets nobody write, while readers go on without a lock.
    std::filesystem::remove(folder.file("data/fru.dat.lock"));
    std::filesystem::create_symlink("fru.dat.lock", folder.file("data/fru.dat.lock"));
    const std::string file =
        folder.write("units.csv", _header + "39M4,7,Acme,Pump,\r\n39M5,7,Acme,Fan,\r\n");
    const CommandRun done = run({"import", file});
    EXPECT_EQ(1, done.status);
    EXPECT_EQ("", done.out);
    EXPECT_THAT(done.err, HasSubstr("not done: edit FRUNumber=\"39M4\""));
    EXPECT_THAT(done.err, Not(HasSubstr("39M5")));
    EXPECT_THAT(done.err, HasSubstr("stopped: 0 of 2 changes are made"));
}
