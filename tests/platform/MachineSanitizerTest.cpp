// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineSanitizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <set>

#include "BuildPaths.h"
#include "DeviceParts.h"
#include "FirmwareParts.h"
#include "ScopedEnvironment.h"
#include "SmBiosDecoder.h"
#include "Uuid.h"

namespace QZ {
namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

constexpr const char* _table = "sys/firmware/dmi/tables/DMI";
constexpr const char* _entryPoint = "sys/firmware/dmi/tables/smbios_entry_point";
const std::string _uuid("\x00\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC\xDD\xEE\x0F", 16);

class Sanitized : public testing::Test {
protected:
    static MachineFiles recorded(const std::string& name) {
        const ScopedEnvironment environment(
            "TAVQZ_HOST_ROOT", std::string(TAVQZ_SOURCE_DIR "/tests/machines/") + name);
        return recordMachine().files;
    }

    static MachineFiles sanitized(const std::string& name) {
        MachineFiles files = recorded(name);
        sanitizeMachine(files, "key");
        return files;
    }

    // A machine of the firmware, and of the files.
    static MachineFiles sanitized(const SmBiosBuilder& firmware, const MachineFiles& others = {}) {
        MachineFiles files = others;
        files[_table] = firmware.table();
        files[_entryPoint] = firmware.entryPoint();
        sanitizeMachine(files, "key");
        return files;
    }

    static SmBios::Contents decode(const MachineFiles& files) {
        return decodeSmBios(files.at(_entryPoint), files.at(_table));
    }
};

TEST_F(Sanitized, MachineTellsNoSerialNumbersUuidOrNames) {
    std::string all;
    for (const auto& [name, content] : sanitized("rack-server")) {
        all += content;
    }
    for (const char* secret :
         {"EXS2100417", "EXB7A00319", "EXR2000072", "EXC8000417", "5A3C1010", "5A3C1080",
          "6SJ0041A", "rack-server", "5f3a9c1e7d2b4860", "\x10\x32\x54\x76\x98\xBA\xDC\xFE"}) {
        EXPECT_THAT(all, Not(HasSubstr(secret)));
    }
    for (const char* kept : {"Example Server 2U -[EX2100-7A]-", "Rev C", "EX600-15K", "EM16G-3200R",
                             "Example Processor 6316"}) {
        EXPECT_THAT(all, HasSubstr(kept));
    }
}

TEST_F(Sanitized, TextsKeepTheirShape) {
    const MachineFiles before = recorded("old-server");
    const MachineFiles after = sanitized("old-server");
    ASSERT_EQ(before.size(), after.size());
    for (const auto& [name, content] : before) {
        EXPECT_EQ(after.at(name).size(), content.size()) << name;
    }
    EXPECT_THAT(after.at("etc/machine-id"), testing::MatchesRegex("[0-9a-f]{32}\n"));
    EXPECT_THAT(after.at("etc/hostname"), testing::MatchesRegex("[a-z]{3}-[a-z]{6}\n"));
    EXPECT_NE(after.at("proc/ide/hda/identify"), before.at("proc/ide/hda/identify"));
    EXPECT_EQ(after.at("proc/ide/hdc/identify"), before.at("proc/ide/hdc/identify"))
        << "a drive without a serial number";
    EXPECT_EQ(after.at("proc/cpuinfo"), before.at("proc/cpuinfo"));
}

TEST_F(Sanitized, TextIsTheSameEverywhereAndAnotherWithAnotherKey) {
    MachineFiles files = {{"etc/hostname", "server-17\n"},
                          {"dev/sda/12018000ff00", std::string("\0\x80\0\x09server-17", 13)},
                          {"dev/sdb/12018000ff00", std::string("\0\x80\0\x0Dserver-17 4711", 18)},
                          {"proc/cpuinfo", "model name\t: of server-17 and abc\n"},
                          {"etc/machine-id", "abc\n"}};
    MachineFiles others = files;
    sanitizeMachine(files, "key");
    sanitizeMachine(others, "another");
    const std::string name = files["etc/hostname"].substr(0, 9);
    EXPECT_NE(name, "server-17");
    EXPECT_EQ(files["dev/sda/12018000ff00"].substr(4), name);
    EXPECT_EQ(files["proc/cpuinfo"], "model name\t: of " + name + " and abc\n");
    EXPECT_THAT(files["dev/sdb/12018000ff00"], Not(HasSubstr("4711")));
    EXPECT_NE(files["etc/hostname"], others["etc/hostname"]);
}

// A disk's page 80h as its folder and as the kernel has it.
constexpr const char* _replyPage = "dev/sda/12018000ff00";
constexpr const char* _kernelPage = "sys/block/sda/device/vpd_pg80";

TEST_F(Sanitized, TableIsReadAsFarAsAReplayReadsIt) {
    SmBiosBuilder firmware(EntryPoint::Version2, 2, 8);
    addSystem(firmware, {"Corp", "Server", "04", "S-0001"}, _uuid);
    firmware.addEnd();
    addMemory(firmware, "DIMM 1", {"Modules", "", "", "LEAKED-SERIAL-1"}, "P");
    firmware.addEnd().announceCount(4);
    const MachineFiles files = sanitized(firmware);
    ASSERT_EQ(decode(files).tables.size(), 4U);
    EXPECT_THAT(decode(files).tables[2].getString(3), MatchesRegex("[A-Z]{6}-[A-Z]{6}-[0-9]"));
    EXPECT_THAT(files.at(_table), Not(HasSubstr("LEAKED-SERIAL-1")));
}

TEST_F(Sanitized, TableTellsNothingBehindWhatAReplayReads) {
    SmBiosBuilder hidden(EntryPoint::Version3, 3, 0);
    addMemory(hidden, "DIMM 1", {"Modules", "", "", "LEAKED-SERIAL-1"}, "P");
    const std::string header("\x11\x02\0\0", 4);
    const std::string cut("\x11\xF0\0\0", 4);
    const std::string end("\x7F\x04\0\0\0\0", 6);
    for (const std::string& stop : {header, cut, end}) {
        SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
        addSystem(firmware, {"Corp", "Server", "04", "S-0001"}, _uuid);
        MachineFiles files = {{_entryPoint, firmware.entryPoint()},
                              {_table, firmware.table() + stop + hidden.table()}};
        const SmBios::Contents before = decode(files);
        sanitizeMachine(files, "key");
        EXPECT_THAT(files.at(_table), Not(HasSubstr("LEAKED")));
        EXPECT_THAT(files.at(_table), HasSubstr("Server"));
        EXPECT_EQ(decode(files).reason, before.reason);
        EXPECT_EQ(decode(files).tables.size(), before.tables.size());
    }
}

TEST_F(Sanitized, TableTellsNoStringThatItsEndCutsOff) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    addMemory(firmware, "DIMM 1", {"Modules", "", "", "LEAKED-SERIAL-1"}, "P");
    std::string table = firmware.table();
    table.resize(table.find("SERIAL-1"));
    MachineFiles files = {{_entryPoint, firmware.entryPoint()}, {_table, table}};
    const SmBios::Contents before = decode(files);
    sanitizeMachine(files, "key");
    EXPECT_THAT(files.at(_table), Not(HasSubstr("LEAKED")));
    EXPECT_EQ(decode(files).reason, before.reason);
    EXPECT_STREQ(decode(files).tables[0].getString(2), before.tables[0].getString(2));
}

TEST_F(Sanitized, TableTellsNoManagementServiceAndNoTagsInMakersTexts) {
    const std::string service = "0123456789abcdeX";
    const std::string name = "bmc-17.example.com";
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    std::string record = service + std::string(74, '\1') + static_cast<char>(name.size()) + name;
    const auto size = static_cast<unsigned char>(record.size());
    firmware.add(42, static_cast<unsigned char>(14 + size))
        .byte(4, 0x40)
        .byte(5, 5)
        .byte(11, 1)
        .byte(12, 4)
        .byte(13, size)
        .bytes(14, record);
    firmware.add(11, 5).text(4, "Service Tag: LEAKTAG99").text(4, "Board: kept-77");
    firmware.add(200, 6).text(4, "Rev=kept-78; Chassis S/N=4711-0815,Mode: kept-79").text(5, "x");
    firmware.addEnd();
    const MachineFiles files = sanitized(firmware, {{"proc/cpuinfo", "model name\t: of bmc-17\n"}});
    for (const char* secret : {"0123456789abcdeX", "bmc-17", "example", "LEAKTAG99", "4711-0815"}) {
        EXPECT_THAT(files.at(_table), Not(HasSubstr(secret)));
    }
    for (const char* kept : {"Service Tag: ", "kept-77", "kept-78", "kept-79", "Chassis S/N="}) {
        EXPECT_THAT(files.at(_table), HasSubstr(kept));
    }
    const std::string host = files.at("proc/cpuinfo").substr(16, 6);
    EXPECT_NE(host, "bmc-17");
    EXPECT_THAT(files.at(_table), HasSubstr(host + "."));
}

TEST_F(Sanitized, DisksTellNothingOfTheirMakersOwn) {
    std::string inquiry = standardInquiryReply("SEAGATE", "ST3146855SS");
    inquiry += "3LN0ABCD" + std::string(24, '\0') + std::string(28, 'v') + "COPYRIGHT 4711";
    MachineFiles files = {{"dev/sda/12000000ff00", inquiry},
                          {_replyPage, serialNumberReply("3LN0ABCD00009735XXXX")}};
    sanitizeMachine(files, "key");
    const std::string after = files.at("dev/sda/12000000ff00");
    EXPECT_EQ(after.substr(0, 36), inquiry.substr(0, 36));
    EXPECT_EQ(after.substr(36, 8), std::string(8, ' '));
    EXPECT_EQ(after.substr(56, 40), inquiry.substr(56, 40));
    EXPECT_EQ(after.substr(96), std::string(inquiry.size() - 96, ' '));
}

TEST_F(Sanitized, HostTellsNeitherItsNameNorItsDomain) {
    const MachineFiles before = {
        {"etc/hostname", "web01.rack.example.com\n"},
        {"etc/X11/XF86Config", "Identifier \"of web01 in rack.example.com\"\n"},
        {"proc/cpuinfo", "web01.rack.example.com of db1.rack.example.com\n"}};
    MachineFiles files = before;
    sanitizeMachine(files, "key");
    const std::string name = files["etc/hostname"];
    const std::string host = name.substr(0, 5);
    const std::string domain = name.substr(6, 16);
    EXPECT_THAT(name, MatchesRegex("[a-z]{3}[0-9]{2}\\.[a-z]{4}\\.[a-z]{7}\\.[a-z]{3}\n"));
    EXPECT_NE(host, "web01");
    EXPECT_NE(domain, "rack.example.com");
    EXPECT_EQ(files["etc/X11/XF86Config"], "Identifier \"of " + host + " in " + domain + "\"\n");
    EXPECT_EQ(files["proc/cpuinfo"], host + "." + domain + " of db1." + domain + "\n");
}

TEST_F(Sanitized, SecretIsTheSameWhateverPadsIt) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    addMemory(firmware, "DIMM 1", {"Modules", "", "", "\tTAB-1234 "}, "P");
    firmware.addEnd();
    const std::string page = serialNumberReply("TAB-1234");
    const MachineFiles files =
        sanitized(firmware, {{_replyPage, page},
                             {_kernelPage, page + std::string(8, '\0') + "OLD-5678"},
                             {"sys/block/nvme0n1/serial", "TAB-1234            \r\n"}});
    const std::string other = files.at(_replyPage).substr(4);
    EXPECT_THAT(other, MatchesRegex("[A-Z]{3}-[0-9]{4}"));
    EXPECT_NE(other, "TAB-1234");
    EXPECT_STREQ(decode(files).tables[0].getString(3), ("\t" + other + " ").c_str());
    EXPECT_EQ(files.at(_kernelPage).substr(4, 16), other + std::string(8, '\0'));
    EXPECT_THAT(files.at(_kernelPage), Not(HasSubstr("OLD-5678")));
    EXPECT_EQ(files.at("sys/block/nvme0n1/serial"), other + "            \r\n");
}

TEST_F(Sanitized, UuidIsTheSameInBytesAndAsText) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    addSystem(firmware, {"Corp", "Server", "04", "S-0001"}, _uuid);
    firmware.addEnd();
    const MachineFiles files =
        sanitized(firmware, {{"sys/hypervisor/uuid", "33221100-5544-7766-8899-aabbccddee0f\n"},
                             {"etc/machine-id", "33221100554477668899aabbccddee0f\n"},
                             {"etc/X11/XF86Config", "33221100-5544-7766-8899-AABBCCDDEE0F\n"}});
    const std::string bytes = files.at(_table).substr(8, 16);
    EXPECT_NE(bytes, _uuid);
    std::vector<unsigned char> ordered;
    for (const int at : {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15}) {
        ordered.push_back(static_cast<unsigned char>(bytes[std::size_t(at)]));
    }
    const std::string text = Uuid(ordered).toString();
    EXPECT_EQ(files.at("etc/X11/XF86Config"), text + "\n");
    EXPECT_STRCASEEQ(files.at("sys/hypervisor/uuid").c_str(), (text + "\n").c_str());
    EXPECT_THAT(files.at("sys/hypervisor/uuid"), MatchesRegex("[-0-9a-f]{36}\n"));
    EXPECT_THAT(files.at("etc/machine-id"),
                testing::StartsWith(files.at("sys/hypervisor/uuid").substr(0, 8)));
}

TEST_F(Sanitized, WorldWideNameIsTheSameInADrivesWordsAndAsText) {
    const std::string drive = IdentifyBuilder::drive("EXAMPLE", "IDE-4711")
                                  .word(108, 0x5000)
                                  .word(109, 0xC500)
                                  .word(110, 0x1234)
                                  .word(111, 0x56AB)
                                  .text(176, "MEDIUM-1")
                                  .build();
    MachineFiles files = {{"proc/ide/hda/identify", drive},
                          {"sys/block/sda/device/wwid", "naa.5000c500123456ab\n"},
                          {_replyPage, serialNumberReply("5000C500123456AB")},
                          {"sys/block/sdb/device/wwid", "t10.ATA     EXAMPLE     IDE-4711  \n"},
                          {"sys/block/sdc/device/wwid", "nvme.144d-4944452d34373131-4558-01\n"}};
    sanitizeMachine(files, "key");
    const auto characters = [&files](std::size_t first, std::size_t count) {
        std::string digits;
        for (const char digit : files["proc/ide/hda/identify"]) {
            digits += std::isxdigit(static_cast<unsigned char>(digit)) != 0 ? std::string(1, digit)
                                                                            : std::string();
        }
        return digits.substr(4 * first, 4 * count);
    };
    const std::string name = characters(108, 4);
    EXPECT_NE(name, "5000c500123456ab");
    EXPECT_EQ(files["sys/block/sda/device/wwid"], "naa." + name + "\n");
    EXPECT_STRCASEEQ(files[_replyPage].substr(4).c_str(), name.c_str());
    const std::string t10 = files["sys/block/sdb/device/wwid"];
    EXPECT_THAT(t10, MatchesRegex("t10.ATA     EXAMPLE     [A-Z]{3}-[0-9]{4}  \n"));
    EXPECT_THAT(t10, Not(HasSubstr("IDE-4711")));
    EXPECT_EQ(files["sys/block/sdc/device/wwid"], "nvme.144d-" + characters(16, 4) + "-4558-01\n")
        << "the serial number at its field's end";
    EXPECT_NE(characters(176, 4), "4d454449554d2d31");
}

TEST_F(Sanitized, PlaceholderStaysWhereverItStands) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    addSystem(firmware, {"Unknown", "Default string", "None", "Default string"},
              std::string("\0\2\0\3\0\4\0\5\0\6\0\7\0\x08\0\x09", 16));
    addMemory(firmware, "DIMM 1", {"Unknown", "", "", "Unknown"}, "P");
    addMemory(firmware, "DIMM 2", {"Modules", "", "", "00000000"}, "00000000");
    firmware.addEnd();
    const MachineFiles others = {{"etc/X11/XF86Config", "VendorName \"Unknown\"\n"},
                                 {"sys/hypervisor/uuid", "03000200-0400-0500-0006-000700080009\n"},
                                 {"etc/hostname", "localhost\n"},
                                 {_replyPage, serialNumberReply("X12")}};
    MachineFiles expected = others;
    expected[_table] = firmware.table();
    expected[_entryPoint] = firmware.entryPoint();
    EXPECT_EQ(sanitized(firmware, others), expected);
}

TEST_F(Sanitized, NumbersOfOneShapeStayApart) {
    MachineFiles files;
    std::set<std::string> others;
    for (char disk = 'a'; disk <= 'z'; ++disk) {
        const std::string name = std::string("dev/sd") + disk + "/12018000ff00";
        files[name] = serialNumberReply(std::string("7TK0") + std::to_string(1000 + disk));
    }
    sanitizeMachine(files, "key");
    for (const auto& [name, page] : files) {
        others.insert(page);
    }
    EXPECT_EQ(others.size(), 26U);
}

TEST_F(Sanitized, MachineMayHoldAnything) {
    for (const char* name : {"damaged-firmware", "hostile-texts", "bare"}) {
        const MachineFiles before = recorded(name);
        EXPECT_EQ(sanitized(name).size(), before.size());
    }
}

}  // namespace
}  // namespace QZ
