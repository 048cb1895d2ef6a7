// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MonitorProbe.h"

#include "InventoryMachine.h"

namespace QZ {
namespace {

class MonitorProbe : public InventoryMachine {
protected:
    void probe(const std::string& configuration) {
        writeFile("etc/X11/XF86Config", configuration);
        EXPECT_NE(getMonitorInfo(info), 0);
    }

    void expectMonitor(const std::string& vendor, const std::string& model) const {
        EXPECT_EQ(info.monitorVendor, vendor);
        EXPECT_EQ(info.monitorModel, model);
    }
    void expectVideoCard(const std::string& vendor, const std::string& model) const {
        EXPECT_EQ(info.videoCardVendor, vendor);
        EXPECT_EQ(info.videoCardModel, model);
    }

    MonitorInfo info;
};

TEST_F(MonitorProbe, GivesMonitorAndVideoCardWithTheirQuotes) {
    probe(
        "Section \"Monitor\"\n\tIdentifier \"M0\"\n\tVendorName \"Example\"\n"
        "\tModelName \"EX 17\"\nEndSection\n"
        "Section \"Device\"\n\tIdentifier \"Card 8\"\n\tVendorName \"Sample\"\nEndSection\n");
    expectMonitor("\"Example\"", "\"EX 17\"");
    expectVideoCard("\"Sample\"", "\"Card 8\"");
}

TEST_F(MonitorProbe, TakesEntriesIndentedOrNot) {
    probe(
        "Section \"Monitor\"\nVendorName a\n   ModelName\tb\nEndSection\n"
        "Section \"Device\"\nIdentifier   c\n\t\tVendorNamed\nEndSection\n");
    expectMonitor("a", "b");
    expectVideoCard("d", "c");
}

TEST_F(MonitorProbe, LetsTheLaterEntryCount) {
    probe(
        "Section \"Monitor\"\nModelName model\nIdentifier later\nEndSection\n"
        "Section \"Device\"\nIdentifier first\nEndSection\n"
        "Section \"Device\"\nIdentifier second\nEndSection\n");
    expectMonitor("", "later");
    expectVideoCard("", "second");
}

TEST_F(MonitorProbe, KeepsTheIdentifierWhereTheModelIsGeneric) {
    probe(
        "Section \"Monitor\"\n\tIdentifier \"EX 17\"\n"
        "\tModelName \"Generic Monitor\"\nEndSection\n");
    expectMonitor("", "\"EX 17\"");
}

TEST_F(MonitorProbe, RejectsWhatAToolWroteForWantOfAName) {
    for (const char* value :
         {"Generic", "My Generic Card", "Monitor Probed", "Unknown", "xUnknownx"}) {
        info = {"v", "m", "V", "M"};
        std::string entries;
        for (const char* name : {"Identifier ", "ModelName ", "VendorName "}) {
            entries.append(name).append(value).append("\n");
        }
        entries += "EndSection\n";
        std::string text = "Section \"Monitor\"\n";
        text.append(entries).append("Section \"Device\"\n").append(entries);
        probe(text);
        expectMonitor("v", "m");
        expectVideoCard("V", "M");
    }
    probe("Section \"Monitor\"\nModelName generic probed unknown\nEndSection\n");
    expectMonitor("v", "generic probed unknown");
}

TEST_F(MonitorProbe, KeepsASectionOpenUntilAnEndThatIsNotIndented) {
    probe(
        "Section \"Device\"\n\tEndSection\nSection \"Monitor\"\nVendorName card's\nEndSection \n"
        "EndSection\nVendorName nobody's\nSection \"Monitor\"\nVendorName monitor's\n");
    expectVideoCard("card's", "");
    expectMonitor("monitor's", "");
}

TEST_F(MonitorProbe, FindsASectionAnywhereInALine) {
    probe("# Section \"Monitor\" was here\nVendorName a\nEndSection\n");
    expectMonitor("a", "");
    info = {};
    probe("Section  \"Monitor\"\nVendorName a\nEndSection\nsection \"Device\"\nVendorName b\n");
    expectMonitor("", "");
    expectVideoCard("", "");
}

TEST_F(MonitorProbe, KeepsNoMoreThan255CharactersOfAValue) {
    probe("Section \"Device\"\nIdentifier " + std::string(255, 'x') + "\nVendorName " +
          std::string(256, 'y') + "\nEndSection\n");
    expectVideoCard(std::string(255, 'y'), std::string(255, 'x'));
}

TEST_F(MonitorProbe, RejectsAValueForWhatItHasBeyond255Characters) {
    const std::string text(300, 'x');
    for (const char* mark : {"Generic", "Probed", "Unknown"}) {
        info = {"v", "m", "V", "M"};
        probe("Section \"Monitor\"\nIdentifier " + text + mark + "\nEndSection\n" +
              "Section \"Device\"\nVendorName " + text.substr(0, 252) + mark + "\nEndSection\n");
        expectMonitor("v", "m");
        expectVideoCard("V", "M");
    }
}

TEST_F(MonitorProbe, TakesTheFirstMebibyteOfAFile) {
    const std::string section = "Section \"Monitor\"\nVendorName Screens\nEndSection\n";
    probe(section + std::string(1 << 20, '#') + "\n" + section);
    expectMonitor("Screens", "");
}

TEST_F(MonitorProbe, LeavesATextAloneThatIsNotGiven) {
    info = {"v", "m", "V", "M"};
    probe("Section \"Monitor\"\nIdentifier\nEndSection\n");
    expectMonitor("v", "m");
    expectVideoCard("V", "M");
}

TEST_F(MonitorProbe, FailsWithoutTheFile) {
    info = {"v", "m", "V", "M"};
    EXPECT_EQ(getMonitorInfo(info), 0);
    expectMonitor("v", "m");
    expectVideoCard("V", "M");
}

}  // namespace
}  // namespace QZ
