// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Machines.h"

#include <filesystem>

#include "AssetText.h"
#include "ControllerText.h"
#include "DeviceParts.h"
#include "FirmwareParts.h"
#include "RaidParts.h"
#include "ServiceProcessorText.h"
#include "SmBiosBuilder.h"

namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;

std::string _uuid(unsigned char last) {
    std::string bytes = "\x10\x32\x54\x76\x98\xBA\xDC\xFE\x80\x01\x02\x03\x04\x05\x06";
    return bytes + static_cast<char>(last);
}

std::string _cpuInfo(int processors, const std::string& modelName) {
    std::string text;
    for (int i = 0; i < processors; ++i) {
        text += "processor\t: " + std::to_string(i) +
                "\nvendor_id\t: ExampleCorp\ncpu family\t: 6\nmodel\t\t: 106\nmodel name\t: " +
                modelName + "\nstepping\t: 6\ncpu MHz\t\t: 2400.000\n\n";
    }
    return text;
}

void _writeSystem(const std::string& root, const std::string& hostName,
                  const std::string& machineId, const std::string& cpuInfo,
                  const std::string& asset) {
    writeTestFile(root + "/etc/hostname", hostName + "\n");
    writeTestFile(root + "/etc/machine-id", machineId + "\n");
    writeTestFile(root + "/proc/cpuinfo", cpuInfo);
    writeTestFile(root + "/var/lib/tavqz/asset.dat", asset);
}

void _writeIdeDrive(const std::string& root, char letter, const std::string& text) {
    writeTestFile(root + "/proc/ide/hd" + letter + "/identify", text);
}

void _writeXServer(const std::string& root, const std::string& configuration) {
    writeTestFile(root + "/etc/X11/XF86Config", configuration);
}

void _writeServiceProcessors(const std::string& root, const std::string& description) {
    writeTestFile(root + "/etc/tavqz/service-processor.txt", description);
}

const char* const _pciNames =
    "# A list of the machine's own.\n"
    "1000  Example Chips\n"
    "\t005d  EX3108\n"
    "\t\t1028 1f43  Eight-Port RAID Card\n"
    "1028  Example Corp\n";

// The first two disks are in an array of the system's own. A controller has two more that the
// system sees as one volume, and another one has none yet.
void _writeRaid(const std::string& root) {
    RaidBuilder raid(root);
    raid.scsiDisk({"1:0:0:0", "sda", "EXAMPLE", "EX600-15K", "6SJ0041A    "});
    raid.scsiDisk({"1:0:1:0", "sdb", "EXAMPLE", "EX600-15K", "6SJ0042B    "});
    raid.partition("sda", "sda1").partition("sdb", "sdb1");
    raid.array({"md0", "raid1"});
    raid.member("md0", "sda1", "in_sync", "0").member("md0", "sdb1", "in_sync", "1");

    raid.pciNames(_pciNames);
    raid.board({"0000:03:00.0", "0x010400", "1000:005d", "1028:1f43",
                pciVpd("RAID Card 8i", "03-25420-09A", "SV53300001")});
    raid.host("0000:03:00.0", 0, "megaraid_sas");
    raid.scsiDisk({"0:0:4:0", "", "EXAMPLE", "EX900-10K", "7TK00104"}).slot("0:0:4:0", "Slot 04");
    raid.scsiDisk({"0:0:5:0", "", "EXAMPLE", "EX900-10K", "7TK00105"}).slot("0:0:5:0", "Slot 05");
    raid.scsiDisk({"0:2:0:0", "sde", "EXAMPLE", "Volume", "00c0ffee"});
    raid.board({"0000:04:00.0", "0x010400", "1000:005d", "1028:1f43", ""});
    raid.host("0000:04:00.0", 2, "megaraid_sas");
}

void _writeHostileRaid(const std::string& root) {
    RaidBuilder raid(root);
    raid.scsiDisk({"0:0:0:0", "sda", "<&\"'>\xFF", "\x1B[31m]]>%s", "=1+1\x01"});
    raid.slot("0:0:0:0", "<b>&%s");  // a name that every file system and archive keeps
    raid.array({"md0", "</raid>\xFF"}).member("md0", "sda", "\x1B", "-1");
    raid.board({"0000:00:01.0", "0x010400", "<&>\xFF:\x1B[2J", "]]>\x01:%s%n",
                "\x82\x02\xFFPN\x90\xFF\xFFPN\xFF"});
    raid.host("0000:00:01.0", 1, "<&\x1B>").pciNames("\xFF\nno list at all\n");
}

void _writeController(const std::string& root, const std::string& replies) {
    writeTestFile(root + "/dev/ipmi0.replies", replies);
}

void _writeRackServer(const std::string& root) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 5);
    addBios(firmware, "EX2U-2.14", "03/02/2025");
    addSystem(firmware, {"Example Corp", "Example Server 2U -[EX2100-7A]-", "04", "EXS2100417"},
              _uuid(0x11));
    addBaseBoard(firmware, {"Example Corp", "System Board 7A", "Rev C", "EXB7A00319"});
    addBaseBoard(firmware, {"Example Corp", "Riser Board 2", "Rev A", "EXR2000072"}, daughterBoard);
    addEnclosure(firmware, {"Example Corp", "", "2U-8", "EXC8000417"});
    for (const char* socket : {"CPU 1", "CPU 2"}) {
        addProcessor(firmware, socket,
                     {"Example Corp", "", "Example Processor 6316 2.40GHz", "Not Specified"});
    }
    for (int i = 1; i <= 8; ++i) {
        const std::string number = std::to_string(i);
        addMemory(firmware, "DIMM " + number,
                  {i <= 4 ? "Example Memory" : "Sample Modules", "", "", "5A3C10" + number + "0"},
                  "EM16G-3200R");
    }
    firmware.addEnd().writeBelow(root);
    _writeSystem(root, "rack-server", "5f3a9c1e7d2b4860a1b2c3d4e5f60718",
                 _cpuInfo(4, "Example Processor 6316 @ 2.40GHz"), filledAsset());
    writeScsiDisk(root, 'a', "EXAMPLE", "EX600-15K", "6SJ0041A    ");
    writeScsiDisk(root, 'b', "EXAMPLE", "EX600-15K", "6SJ0042B    ");
    // A card reader, which has no serial number to tell.
    writeTestFile(root + "/dev/sdc/" + standardInquiryFile,
                  standardInquiryReply("SAMPLE", "Card Reader"));
    writeScsiDisk(root, 'd', "SAMPLE", "Flash 2", "");
    _writeRaid(root);
    _writeServiceProcessors(root, wholeServiceProcessor());
    _writeController(root, eventfulController());
}

void _writeOldServer(const std::string& root) {
    SmBiosBuilder firmware(EntryPoint::Version2, 2, 2);
    addBios(firmware, "EXT4-1.03", "11/20/1999");
    addSystem(firmware, {"Example Corp", "Example Server -[EX400]-", "1.0", "EXT4000023"},
              _uuid(0x22));
    addBaseBoard(firmware, {"Example Corp", "Server Board", "B2", "EXB4000023"});
    addEnclosure(firmware, {"Example Corp", "", "2U", "EXC4000023"});
    addOldMemory(firmware, "J14");
    addOldMemory(firmware, "J15");
    firmware.addEnd().writeBelow(root);
    _writeSystem(root, "old-server", "0b1c2d3e4f5061728394a5b6c7d8e9fa",
                 _cpuInfo(1, "Example Processor III"), emptyAsset());
    _writeIdeDrive(root, 'a', IdentifyBuilder::drive("EXAMPLE EX-40 UDMA", "EXI40-00071").build());
    _writeIdeDrive(root, 'c', IdentifyBuilder::drive("SAMPLE CD-ROM 52X", "").build());
    writeScsiDisk(root, 'a', "EXAMPLE", "EX9-U160", "3HZ00017");
    _writeXServer(root,
                  "# Written at installation.\n"
                  "Section \"Monitor\"\n"
                  "\tIdentifier  \"Monitor0\"\n"
                  "\tVendorName  \"Example Displays\"\n"
                  "\tModelName   \"EX 17s\"\n"
                  "\tHorizSync   30.0 - 70.0\n"
                  "EndSection\n"
                  "Section \"Device\"\n"
                  "\tIdentifier  \"Example Graphics 8\"\n"
                  "\tDriver      \"vesa\"\n"
                  "\tVendorName  \"Example Corp\"\n"
                  "EndSection\n");
}

void _writeDamagedFirmware(const std::string& root) {
    SmBiosBuilder firmware(EntryPoint::Version2, 2, 8);
    addBios(firmware, "EX2U-1.00", "05/06/2014");
    addSystem(firmware, {"Example Corp", "Example Server 2U -[EX1000]-", "02", "EXS1000555"},
              _uuid(0x33));
    addBaseBoard(firmware, {"Example Corp", "System Board 1", "Rev B", "EXB1000555"});
    addEnclosure(firmware, {"Example Corp", "", "2U-4", "EXC1000555"});
    addMemory(firmware, "DIMM 1", {"Example Memory", "", "", "77AA0001"}, "EM16G-3200R");
    addMemory(firmware, "DIMM 2", {"Example Memory", "", "", "77AA0002"}, "EM16G-3200R");
    firmware.spoilChecksum().announceLength(40).announceCount(200).writeBelow(root);
    // In the middle of the last serial number: its maker stands before it and is whole.
    const std::string table = firmware.table();
    std::filesystem::resize_file(root + "/sys/firmware/dmi/tables/DMI", table.rfind("0002") + 2);
    _writeSystem(root, "damaged-firmware", "112233445566778899aabbccddeeff00",
                 _cpuInfo(2, "Example Processor 2620"), emptyAsset());
    // One file ends in its third line, one disk says that more follows than does.
    _writeIdeDrive(root, 'a', IdentifyBuilder::drive("EXAMPLE", "EXI1").build().substr(0, 110));
    writeScsiDisk(root, 'a', "EXAMPLE", "EX300", "7AB00012");
    writeTestFile(root + "/dev/sda/" + standardInquiryFile,
                  standardInquiryReply("EXAMPLE", "EX300").substr(0, 19));
    writeTestFile(root + "/dev/sda/" + serialNumberFile,
                  serialNumberReply("7AB00012").substr(0, 8));
    // The end of the first section is indented, which makes it none.
    _writeXServer(root,
                  "Section \"Device\"\n"
                  "\tIdentifier \"Unknown card\"\n"
                  "\tEndSection\n"
                  "Section \"Monitor\"\n"
                  "\tVendorName \"Example Displays\"\n");
    _writeServiceProcessors(root, failingServiceProcessors());
}

void _writeHostileTexts(const std::string& root) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    addBios(firmware, "<!-- ]]> -->", "99/99/9999");
    // A UUID of FFh bytes means that there is none.
    addSystem(firmware,
              {"Example & Sons <script>alert(\"1\")</script>", "%s%n -[]]>&#0;[--", "\\\"'\\",
               "\x01\x02\t\r\n\x1B[31m\x7F EX\"1\"<&>"},
              std::string(16, '\xFF'));
    addBaseBoard(firmware, {"\xFF\xFE\xC3\x28\xC0\xAF", "\xED\xA0\x80\xF5\x80\x80\x80",
                            "\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x96\xA5", "\xFF\xFF\xFF\xFF"});
    addEnclosure(firmware, {"   blanks   ", "", "\xC2\x85\xEF\xBF\xBF", std::string(4000, 'A')});
    // Turns the reading direction around. Joined, or else it would do so in this source.
    const std::string rightToLeft = std::string("\xE2\x80") + "\xAE";
    addMemory(firmware, rightToLeft, {",;=\t\"", "", "", "=1+1"}, "../../etc");
    firmware.addEnd().writeBelow(root);
    _writeSystem(root, "hostile-texts\x1B]0;\xFF<&>", "not a machine id",
                 _cpuInfo(1, "\x1B[2J<b>&amp;\xFF"), emptyAsset());
    _writeIdeDrive(
        root, 'a',
        IdentifyBuilder::drive("<model>&\"'\x01\xFF\xFE\xC3(", "\x1B[2J]]>\x80").build());
    _writeIdeDrive(root, 'b', std::string(600, 'F') + "\n");
    writeScsiDisk(root, 'a', "<&\"'>\xFF\x80\x01", "\x1B[31m %s%n ]]>", "\x01<&\"'>\x7F\t]]>");
    writeScsiDisk(root, 'b', "EXAMPLE", "EX300", "caf\xE9");
    writeScsiDisk(root, 'c', "EXAMPLE", "EX300", std::string(251, '='));
    _writeXServer(root, "Section \"Monitor\"\nVendorName <b>\xFF\x1B[31m\nModelName " +
                            std::string(4000, '&') + "\nEndSection\n");
    _writeHostileRaid(root);
    _writeServiceProcessors(root, hostileServiceProcessor());
    _writeController(root, hostileController());
}

void _writeBare(const std::string& root) {
    _writeSystem(root, "bare", "00112233445566778899aabbccddeeff",
                 _cpuInfo(1, "Example Virtual Processor"), emptyAsset());
}

}  // namespace

void writeMachines(const std::string& folder) {
    const struct {
        const char* name;
        void (*write)(const std::string& root);
    } machines[] = {{"rack-server", _writeRackServer},
                    {"old-server", _writeOldServer},
                    {"damaged-firmware", _writeDamagedFirmware},
                    {"hostile-texts", _writeHostileTexts},
                    {"bare", _writeBare}};
    for (const auto& machine : machines) {
        const std::string root = folder + "/" + machine.name;
        std::filesystem::remove_all(root);
        machine.write(root);
    }
}
