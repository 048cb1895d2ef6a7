// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "BuildPaths.h"
#include "CommandRun.h"
#include "CsvText.h"
#include "ScopedEnvironment.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

CommandRun _sel(const std::string& machine, const std::vector<std::string>& more = {}) {
    const ScopedEnvironment zone("TZ", "UTC");
    std::vector<std::string> arguments = {"--root", TAVQZ_SOURCE_DIR "/tests/machines/" + machine,
                                          "sel"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runCommandLine(arguments);
}

// The table's line of a record.
std::string _line(const std::string& table, const std::string& record) {
    const std::size_t start = table.find("\n" + record + " ") + 1;
    return table.substr(start, table.find('\n', start) - start);
}

class Sel : public testing::Test {
    const ScopedEnvironment _language{"LC_ALL", "C"};
};

}  // namespace

TEST_F(Sel, LaysTheLogOut) {
    const CommandRun run = _sel("rack-server");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(run.out, StartsWith("Record  Time "));
    EXPECT_THAT(_line(run.out, "1"), HasSubstr("30 s after start           Event Log  "));
    EXPECT_THAT(_line(run.out, "2"),
                HasSubstr("2026-11-20T08:00:00+00:00  CPU 1 Temp             "
                          "IPMI_EVENT_ERC_THOLD_UCH       Upper critical, going high"));
    EXPECT_THAT(_line(run.out, "3"), HasSubstr("Upper critical, going high (deasserted)"));
    EXPECT_THAT(_line(run.out, "7"), HasSubstr("  Memory #0x30  "));
}

TEST_F(Sel, ShowsTheBytesOfWhatItDoesNotKnow) {
    const std::string table = _sel("rack-server").out;
    EXPECT_THAT(_line(table, "10"), HasSubstr("0a 00 02 4c 1b 00 6b 20 00 04 25 61 6f 00 ff ff"));
    EXPECT_THAT(_line(table, "11"), HasSubstr("  #0x62  "));
    EXPECT_THAT(_line(table, "13"), HasSubstr("2026-11-20T11:07:44+00:00"));
    EXPECT_THAT(_line(table, "13"), HasSubstr("0d 00 c0 00 2a 00 6b 39 30 00 20 6d 61 6b 65 72"));
    EXPECT_THAT(_line(table, "14"), HasSubstr("0e 00 fb 74 68"));
    EXPECT_THAT(_line(table, "4660"), HasSubstr("34 12 05 75 6e"));
}

TEST_F(Sel, SpeaksTheLanguageOfTheEnvironment) {
    struct {
        const char* locale;
        const char* sinceStart;
        const char* ended;
        const char* sensor;
    } constexpr languages[] = {
        {"en_GB.UTF-8", "30 s after start", "Upper critical, going high (deasserted)",
         "Memory #0x30"},
        {"de_AT.UTF-8", "30 s nach dem Start",
         "Obere kritische Schwelle überschritten (aufgehoben)", "Speicher #0x30"},
        {"fr_CA.UTF-8", "30 s après le démarrage", "Seuil supérieur critique, en hausse (fin)",
         "Mémoire #0x30"},
        {"es_MX.UTF-8", "30 s tras el arranque", "Umbral superior crítico, en ascenso (fin)",
         "Memoria #0x30"},
        {"ja_JP.UTF-8", "起動後 30 秒", "上限のクリティカルしきい値を上回りました (アサート解除)",
         "メモリー #0x30"},
        {"zh_CN.UTF-8", "启动后 30 秒", "高于严重上限 (已清除)", "内存 #0x30"},
    };
    for (const auto& language : languages) {
        const ScopedEnvironment environment("LC_ALL", language.locale);
        const std::string table = _sel("rack-server").out;
        EXPECT_THAT(_line(table, "1"), HasSubstr(language.sinceStart)) << language.locale;
        EXPECT_THAT(_line(table, "3"), HasSubstr(language.ended)) << language.locale;
        EXPECT_THAT(_line(table, "7"), HasSubstr(language.sensor)) << language.locale;
    }
}

TEST_F(Sel, WritesOnlyTheBytesWhenTheyAreAskedFor) {
    const CommandRun run = _sel("rack-server", {"--raw"});
    EXPECT_THAT(run.out, StartsWith("01 00 02 1e 00 00 00 20 00 04 10 07 6f 02 ff ff\n"));
    EXPECT_EQ(run.out.size(), 14U * 48U);
    const CommandRun csv = _sel("rack-server", {"--raw", "--format", "csv"});
    EXPECT_THAT(csv.out, StartsWith("record,bytes\r\n1,01 00 02 1e"));
    const auto json = nlohmann::json::parse(_sel("rack-server", {"--raw", "--format=json"}).out);
    EXPECT_EQ(json.at(13).at("record"), 0x1234);
    EXPECT_EQ(json.at(13).at("bytes"), "34 12 05 75 6e 6b 6e 6f 77 6e ff ff ff ff ff ff");
}

TEST_F(Sel, WritesJsonWithNullForWhatARecordLacks) {
    const auto json = nlohmann::json::parse(_sel("rack-server", {"--format", "json"}).out);
    ASSERT_EQ(json.size(), 14U);
    EXPECT_EQ(json[2], nlohmann::json::parse(R"({"record": 3, "type": 2,
        "time": "2026-11-20T08:01:30+00:00", "sinceStart": null, "sensor": "CPU 1 Temp",
        "sensorNumber": 48, "sensorType": "IPMI_STC_TEMP", "key": "IPMI_EVENT_ERC_THOLD_UCH",
        "text": "Upper critical, going high", "asserted": false,
        "bytes": "03 00 02 5a fe ff 6a 20 00 04 01 30 81 09 ff ff"})"));
    EXPECT_EQ(json[0]["sinceStart"], 30);
    EXPECT_TRUE(json[0]["time"].is_null());
    for (const char* name : {"time", "sinceStart", "sensor", "sensorNumber", "sensorType", "key",
                             "text", "asserted"}) {
        EXPECT_TRUE(json[12].at(name).is_null()) << name;
    }
    EXPECT_EQ(json[11]["type"], 0xC0);
}

TEST_F(Sel, WritesCsvWithALineForEachRecord) {
    const auto records = QZ::parseCsv(_sel("rack-server", {"--format", "csv"}).out);
    ASSERT_EQ(records.size(), 15U);
    EXPECT_EQ(records[0].fields.size(), 11U);
    EXPECT_EQ(records[2].fields[8], "Upper critical, going high");
    EXPECT_EQ(records[13].fields[4], "");
}

TEST_F(Sel, CannotBeSteeredByASensorsName) {
    const CommandRun run = _sel("hostile-texts");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("tells of 3 records and gave 2"));
    EXPECT_THAT(run.out, Not(HasSubstr("\x1B")));
    EXPECT_THAT(run.out, HasSubstr("\\x1B[2J<&>\","));
    EXPECT_EQ(nlohmann::json::parse(_sel("hostile-texts", {"--format", "json"}).out)[0]["sensor"],
              "\x1B[2J<&>\",");
}

TEST_F(Sel, SaysInOneSentenceThatThereIsNoController) {
    const CommandRun run = _sel("bare");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "tavqz: No management controller: " TAVQZ_SOURCE_DIR
                       "/tests/machines/bare/dev/ipmi0.replies: No such file or directory\n");
}

TEST_F(Sel, AsksTheMachineWhateverServerTheEnvironmentNames) {
    const ScopedEnvironment server("TAVQZ_SERVER", "http://127.0.0.1:1");
    EXPECT_EQ(_sel("rack-server", {"--raw"}).status, 0);
    const CommandRun run = runCommandLine({"sel", "--server", "http://127.0.0.1:1"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, HasSubstr("works without a server"));
}

TEST_F(Sel, RefusesMof) {
    const CommandRun run = _sel("rack-server", {"--format", "mof"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, HasSubstr("table, json and csv"));
}
