// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// The command with the module that is shipped.

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <filesystem>

#include "BuildPaths.h"
#include "CommandRun.h"
#include "MofParser.h"
#include "Schema.h"
#include "ScopedEnvironment.h"

namespace fs = std::filesystem;
using Json = nlohmann::json;
using testing::HasSubstr;

namespace {

// A copy of a machine of tests/machines, to be changed.
class Machine {
public:
    explicit Machine(const std::string& name = "rack-server") {
        fs::copy(TAVQZ_SOURCE_DIR "/tests/machines/" + name, _folder.path(),
                 fs::copy_options::recursive);
    }

    const TemporaryFolder& folder() const { return _folder; }
    // Makes it one that brings libraries.
    void addLibrary(const std::string& name, const std::string& file) const {
        fs::create_directories(_folder.file("run"));
        fs::create_directories(_folder.file("lib"));
        fs::copy_file(file, _folder.file("lib/" + name));
    }
    CommandRun run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--root", _folder.path()});
        return runCommandLine(std::move(arguments));
    }
    // The properties of the one instance of a class.
    Json properties(const std::string& className) const {
        return Json::parse(run({"list", className, "--format", "json"}).out).at(0)["properties"];
    }

private:
    TemporaryFolder _folder;
};

std::vector<std::string> _servedClasses() {
    const QZ::Schema schema = QZ::Schema::load(TAVQZ_SOURCE_DIR "/schema");
    std::vector<std::string> names;
    for (const auto& declared : schema.classes.classes()) {
        if (schema.registration.instanceProvider(QZ::MODEL_NAMESPACE, declared->name)) {
            names.push_back(declared->name);
        }
    }
    return names;
}

}  // namespace

TEST(AssetCommand, KeepsWhatWasSetForTheNextProcess) {
    const Machine machine;
    const CommandRun set =
        machine.run({"set", "TAVIRA_Lease", "EndDate=2027-01-31", "Lessor=Acme", "Term=255"});
    EXPECT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(set.out, "");
    const Json lease = machine.properties("TAVIRA_Lease");
    EXPECT_EQ(lease["Lessor"], "Acme");
    EXPECT_EQ(lease["Term"], 255);
    EXPECT_THAT(std::string(lease["EndDate"]), testing::StartsWith("20270131000000.000000"));
    EXPECT_EQ(lease["FMV"], 2500) << "what was not named stays";

    EXPECT_EQ(machine.run({"set", "TAVIRA_Lease", "EndDate="}).status, 0);
    EXPECT_FALSE(machine.properties("TAVIRA_Lease").contains("EndDate"));
}

TEST(AssetCommand, KeepsThePersonalizedPairsThatWereNotNamed) {
    const Machine machine;
    const Json before = machine.properties("TAVIRA_ComputerSystemDetails");
    ASSERT_NE(before["PersonalizedData1"], "");
    EXPECT_EQ(machine
                  .run({"set", "TAVIRA_ComputerSystemDetails", "PrimaryOwnerName=Ada",
                        "PersonalizedData2=new"})
                  .status,
              0);
    const Json after = machine.properties("TAVIRA_ComputerSystemDetails");
    EXPECT_EQ(after["PrimaryOwnerName"], "Ada");
    EXPECT_EQ(after["PersonalizedData2"], "new");
    for (const char* name : {"PersonalizedLabel1", "PersonalizedData1", "PersonalizedLabel2"}) {
        EXPECT_EQ(after[name], before[name]) << name;
    }
}

TEST(AssetCommand, EndsAsAMonitoringPluginWithWhatIsDue) {
    const Machine machine;
    const auto due = [&machine](const std::string& lease, const std::string& warranty) {
        EXPECT_EQ(machine.run({"set", "TAVIRA_Lease", "EndDate=" + lease}).status, 0);
        EXPECT_EQ(machine.run({"set", "TAVIRA_Warranty", "EndDate=" + warranty}).status, 0);
        return machine.run({"due", "--within", "9000000"});
    };
    const CommandRun fine = due("", "");
    EXPECT_EQ(fine.status, 0);
    EXPECT_EQ(fine.out, "Nothing runs out within 9000000 days\n");
    const CommandRun warning = due("9999-12-31", "");
    EXPECT_EQ(warning.status, 1);
    EXPECT_THAT(warning.out, testing::StartsWith("Lease runs out in "));
    const CommandRun critical = due("9999-12-31", "2020-01-01");
    EXPECT_EQ(critical.status, 2);
    EXPECT_THAT(critical.out, testing::StartsWith("Warranty ran out "));
}

TEST(AssetCommand, TellsWhatIsDueFromThatThisCannotBeFoundOut) {
    const Machine machine;
    const CommandRun failed = machine.run({"due", "--module", "/missing/module.so"});
    EXPECT_EQ(failed.status, 3);
    EXPECT_EQ(failed.out, "");
    EXPECT_THAT(failed.err, HasSubstr("/missing/module.so"));
    for (const std::vector<std::string>& wrong :
         {std::vector<std::string>{"due", "--within", "soon"},
          {"due", "--wihtin", "9"},
          {"--root", "/missing/folder", "due"}}) {
        EXPECT_EQ(runCommandLine(wrong).status, 3) << wrong.back();
    }
    EXPECT_EQ(runCommandLine({"due", "--help"}).status, 0);
}

TEST(AssetCommand, GetsThePathThatNamesWrites) {
    const Machine machine;
    for (const char* name : {"TAVIRA_Lease", "TAVIRA_Warranty", "TAVIRA_ComputerSystemDetails"}) {
        std::string path = machine.run({"names", name}).out;
        ASSERT_FALSE(path.empty()) << name;
        path.pop_back();
        EXPECT_EQ(machine.run({"get", path}).status, 0) << path;
    }
    const CommandRun missing = machine.run({"get", "TAVIRA_Lease.Identifier=\"other\""});
    EXPECT_EQ(missing.status, 3);
}

TEST(AssetCommand, ServesAClassInAnyCase) {
    EXPECT_EQ(Json::parse(Machine().run({"list", "tavira_lease", "--format", "json"}).out).size(),
              1U);
}

TEST(AssetCommand, RefusesTheClassThatNobodyAnswers) {
    const CommandRun run = Machine().run({"list", "TAVIRA_VigilVitalProductData"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("CIM_ERR_INVALID_CLASS (5)"));
}

TEST(AssetCommand, NamesTheFileThatCannotBeSaved) {
    const Machine machine;
    machine.folder().write("file", "");
    const CommandRun run = machine.run(
        {"--data-dir", machine.folder().file("file/data"), "set", "TAVIRA_Lease", "Term=1"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, testing::AllOf(HasSubstr("CIM_ERR_FAILED (1)"), HasSubstr("file/data")));
}

TEST(AssetCommand, AnswersEveryClassOnEveryMachineInEveryFormat) {
    for (const auto& entry : fs::directory_iterator(TAVQZ_SOURCE_DIR "/tests/machines")) {
        if (!entry.is_directory()) {
            continue;
        }
        const Machine machine(entry.path().filename().string());
        for (const std::string& name : _servedClasses()) {
            const std::string place = entry.path().filename().string() + " " + name;
            const CommandRun json = machine.run({"list", name, "--format", "json"});
            EXPECT_EQ(json.status, 0) << place << json.err;
            EXPECT_TRUE(Json::parse(json.out).is_array()) << place;
            const std::string mof = machine.run({"list", name, "--format", "mof"}).out;
            EXPECT_EQ(QZ::parseMof(mof, place).instances.size(), Json::parse(json.out).size());
        }
        const CommandRun report = machine.run({"report"});
        EXPECT_EQ(report.status, 0) << entry.path() << report.err;
        EXPECT_EQ(report.out.find_first_of("\x1B\x07\r"), std::string::npos) << entry.path();
    }
}

TEST(AssetCommand, WritesJsonWithTheServiceProcessorsLibraryPresentMissingAndHalfBound) {
    const ScopedEnvironment trusted("TAVQZ_HOST_LIBRARIES", "1");
    const Machine missing("bare");
    fs::create_directory(missing.folder().file("lib"));
    const Machine present;
    present.addLibrary("libtav_shrdevice.so", PRESENT_LIBRARY);
    const Machine half;
    half.addLibrary("libtav_shrdevice.so", HALF_LIBRARY);
    for (const Machine* machine : {&missing, &present, &half}) {
        for (const char* name : {"TAVIRA_VigilComponentVPD", "TAVIRA_Lease"}) {
            const CommandRun run = machine->run({"list", name, "--format", "json"});
            EXPECT_EQ(run.status, 0) << run.err;
            EXPECT_TRUE(Json::accept(run.out)) << run.out;
            EXPECT_THAT(run.err, HasSubstr("about to load library")) << "else nothing was tested";
        }
    }
    EXPECT_THAT(missing.run({"report"}).err, HasSubstr("No service-processor library"));
    EXPECT_THAT(present.run({"report"}).err,
                testing::Not(HasSubstr("No service-processor library")));
}

TEST(AssetCommand, RunsNothingOfAFolderThatSomebodySent) {
    const Machine machine("bare");
    machine.addLibrary("libtav_shrdevice.so", PRESENT_LIBRARY);
    const std::vector<std::string> ask = {"list", "TAVIRA_VigilPresent", "--format", "json"};
    const CommandRun run = machine.run(ask);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Json::parse(run.out).size(), 0U);
    const std::string note = "tavqz: The libraries in " + machine.folder().file("lib") +
                             " are not loaded; with TAVQZ_HOST_LIBRARIES=1";
    EXPECT_THAT(run.err, HasSubstr(note));
    const ScopedEnvironment trusted("TAVQZ_HOST_LIBRARIES", "1");
    const CommandRun trusting = machine.run(ask);
    EXPECT_THAT(trusting.err, testing::Not(HasSubstr("are not loaded")));
    EXPECT_GT(Json::parse(trusting.out).size(), 0U) << "else nothing was tested";
}

TEST(AssetCommand, AsksTheServiceProcessorThatAMachineDescribes) {
    const Machine machine;
    EXPECT_EQ(machine.properties("TAVIRA_VigilMachineLevelVPD")["SerialNumber"], "S100417");
    EXPECT_EQ(machine.properties("TAVIRA_VigilSystemState")["PowerOnHours"], 14215);
    const CommandRun timer =
        machine.run({"get",
                     "TAVIRA_VigilWatchdog.DeviceID=\"Watchdog2\",SystemCreationClassName="
                     "\"TAVIRA_Computersystem\",SystemName=\"rack-server\",CreationClassName="
                     "\"TAVIRA_VigilWatchdog\"",
                     "--format", "json"});
    EXPECT_EQ(timer.status, 0) << timer.err;
    EXPECT_THAT(timer.out, HasSubstr("\"TimeoutInterval\": 60"));
    EXPECT_THAT(machine.run({"report"}).err,
                testing::Not(HasSubstr("No service-processor library")));
    // A provider need not say in which namespace.
    for (const char* command : {"names", "list"}) {
        EXPECT_THAT(machine.run({command, "TAVIRA_VigilPostBiosVPD", "--format", "json"}).out,
                    HasSubstr("\"root/tavqz:TAVIRA_VigilPostBiosVPD.DeviceType=24,"));
    }
}

TEST(AssetCommand, TellsWhatIsWrongWithADescription) {
    const Machine machine;
    machine.folder().write("etc/tavqz/service-processor.txt", "type = 1\nspeed = 3\n");
    const CommandRun run = machine.run({"list", "TAVIRA_VigilPresent", "--format", "json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Json::parse(run.out).size(), 0U);
    EXPECT_THAT(run.err,
                HasSubstr("etc/tavqz/service-processor.txt: line 2: \"speed\" is no key\n"));
}

TEST(AssetCommand, LeavesAWholeRecordWhereverItIsKilled) {
    const Machine machine;
    int killed = 0;
    for (int round = 0; round < 40; ++round) {
        const std::string value = std::to_string(round);
        const CommandProcess command({"--root", machine.folder().path(), "set", "TAVIRA_Lease",
                                      "Lessor=L" + value, "Payment=P" + value});
        usleep(useconds_t(500 * round));
        command.kill();
        killed += command.wait().status == 128 + SIGKILL;
        const Json lease = machine.properties("TAVIRA_Lease");
        const std::string lessor = lease["Lessor"];
        const std::string payment = lease["Payment"];
        if (lessor == "Example Leasing") {
            EXPECT_EQ(payment, "245.00 EUR a month") << "two saves mixed";
        } else {
            EXPECT_EQ(payment, "P" + lessor.substr(1)) << "two saves mixed";
        }
    }
    EXPECT_GT(killed, 0) << "else nothing was tested";
    EXPECT_EQ(machine.run({"set", "TAVIRA_Lease", "Lessor=last"}).status, 0);
    EXPECT_EQ(machine.properties("TAVIRA_Lease")["Lessor"], "last");
}
