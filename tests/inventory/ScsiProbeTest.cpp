// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ScsiProbe.h"

#include <gtest/gtest.h>

#include <climits>

#include "DeviceParts.h"
#include "MachinePaths.h"
#include "TestScsi.h"

namespace QZ {
namespace {

class ScsiProbe : public testing::Test {
protected:
    TestScsi::Disk& disk(char letter) { return scsi.disks[MachinePaths::scsiDisk(letter)]; }

    void addDisk(char letter, const std::string& vendor, const std::string& product,
                 const std::string& serialNumber) {
        disk(letter) = {{standardInquiryFile, standardInquiryReply(vendor, product)},
                        {serialNumberFile, serialNumberReply(serialNumber)}};
    }

    // The serial number that a disk with this page is said to have; the fallback where it fails.
    std::string serialNumberOf(const std::string& page) {
        disk('a') = {{serialNumberFile, page}};
        std::string text = "as it was";
        const int answered = getSCSISerialNumber(0, text);
        EXPECT_EQ(answered, text == "as it was" ? 0 : 1);
        return text;
    }

    static std::vector<SCSIInfo> probe() {
        std::vector<SCSIInfo> disks;
        getSCSIInfo(disks);
        return disks;
    }

    ~ScsiProbe() override { EXPECT_EQ(scsi.openDisks, 0) << "a disk was left open"; }

    TestScsi scsi;
    std::string serial = "as it was", manufacturer = "as it was", model = "as it was";
};

TEST_F(ScsiProbe, AsksForStandardDataAndForPage80) {
    addDisk('c', "EXAMPLE", "EX600", "S-1");
    EXPECT_EQ(getSCSIManufacturerModel(2, manufacturer, model), 1);
    EXPECT_EQ(getSCSISerialNumber(2, serial), 1);
    ASSERT_EQ(scsi.sent.size(), 2U);
    EXPECT_EQ(recordedReplyName(scsi.sent[0].data), "12000000ff00");
    EXPECT_EQ(recordedReplyName(scsi.sent[1].data), "12018000ff00");
    for (const ScsiRequest& request : scsi.sent) {
        EXPECT_EQ(request.inputLength, 0U);
        EXPECT_EQ(request.outputLength, 1024U);
        for (std::size_t i = 6; i < sizeof request.data; ++i) {
            ASSERT_EQ(request.data[i], 0) << i;
        }
    }
    EXPECT_EQ(manufacturer, "EXAMPLE ");
    EXPECT_EQ(model, "EX600           ");
    EXPECT_EQ(serial, "S-1");
}

TEST_F(ScsiProbe, CutsManufacturerAndModelAtTheirFields) {
    addDisk('a', "12345678", "1234567890123456", "S-1");
    EXPECT_EQ(getSCSIManufacturerModel(0, manufacturer, model), 1);
    EXPECT_EQ(manufacturer, "12345678");
    EXPECT_EQ(model, "1234567890123456");
}

TEST_F(ScsiProbe, TakesShortStandardDataAsFarAsItGoes) {
    disk('a') = {{standardInquiryFile, standardInquiryReply("EXAMPLE", "EX600").substr(0, 18)}};
    EXPECT_EQ(getSCSIManufacturerModel(0, manufacturer, model), 1);
    EXPECT_EQ(manufacturer, "EXAMPLE ");
    EXPECT_EQ(model, "EX");
    disk('a') = {{standardInquiryFile, standardInquiryReply("EXAMPLE", "EX600").substr(0, 5)}};
    EXPECT_EQ(getSCSIManufacturerModel(0, manufacturer, model), 1);
    EXPECT_EQ(manufacturer + model, "");
}

TEST_F(ScsiProbe, LeavesTheOutputsAloneWhereADiskCannotBeOpened) {
    EXPECT_EQ(getSCSIManufacturerModel(0, manufacturer, model), 0);
    EXPECT_EQ(getSCSISerialNumber(0, serial), 0);
    EXPECT_EQ(serial + manufacturer + model, "as it wasas it wasas it was");
    EXPECT_TRUE(scsi.sent.empty());
}

TEST_F(ScsiProbe, LeavesTheOutputsAloneWhereADiskRefuses) {
    disk('a') = {};
    EXPECT_EQ(getSCSIManufacturerModel(0, manufacturer, model), 0);
    EXPECT_EQ(getSCSISerialNumber(0, serial), 0);
    EXPECT_EQ(serial + manufacturer + model, "as it wasas it wasas it was");
    EXPECT_EQ(scsi.sent.size(), 2U);
}

TEST_F(ScsiProbe, SucceedsWithAnEmptySerialNumber) {
    EXPECT_EQ(serialNumberOf(serialNumberReply("")), "");
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string("\0S-1", 4))), "");
    EXPECT_EQ(serialNumberOf(""), "");
}

TEST_F(ScsiProbe, EndsTheSerialNumberAtANul) {
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string("S-1\0after", 9))), "S-1");
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string("S-1\0", 4))), "S-1");
    // What follows is not looked at.
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string("S-1\0\x80", 5))), "S-1");
}

TEST_F(ScsiProbe, TakesNoMoreThanThePageLength) {
    EXPECT_EQ(serialNumberOf(std::string("\x00\x80\x00\x03S-1234", 10)), "S-1");
    EXPECT_EQ(serialNumberOf(std::string("\x00\x80\x00\x03S-1\x80", 8)), "S-1");
}

TEST_F(ScsiProbe, CutsASerialNumberAt79Characters) {
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string(79, 'x'))), std::string(79, 'x'));
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string(80, 'x'))), std::string(79, 'x'));
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string(251, 'x'))), std::string(79, 'x'));
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string(255, 'x'))), std::string(79, 'x'));
}

TEST_F(ScsiProbe, FailsWhereACharacterIsNotAscii) {
    EXPECT_EQ(serialNumberOf(serialNumberReply("S-\x80")), "as it was");
    EXPECT_EQ(serialNumberOf(serialNumberReply("\xFF")), "as it was");
    EXPECT_EQ(serialNumberOf(serialNumberReply(std::string(100, 'x') + "\x80")), "as it was");
    EXPECT_EQ(serialNumberOf(serialNumberReply("S-\x7F\x01")), "S-\x7F\x01");
}

TEST_F(ScsiProbe, KeepsTheBlanksOfASerialNumber) {
    EXPECT_EQ(serialNumberOf(serialNumberReply("  S-1  ")), "  S-1  ");
}

TEST_F(ScsiProbe, TriesTheDisksAToZ) {
    (void)probe();
    ASSERT_EQ(scsi.opened.size(), 26U);
    EXPECT_EQ(scsi.opened.front(), MachinePaths::scsiDisk('a'));
    EXPECT_EQ(scsi.opened.back(), MachinePaths::scsiDisk('z'));
}

TEST_F(ScsiProbe, ListsTheDisksThatAnswerForTheirSerialNumber) {
    addDisk('b', "EXAMPLE", "EX600", "S-1");
    disk('c') = {{standardInquiryFile, standardInquiryReply("SAMPLE", "Reader")}};
    addDisk('d', "EXAMPLE", "EX600", "caf\xE9");
    disk('e') = {{serialNumberFile, serialNumberReply("S-3")}};
    addDisk('z', "EXAMPLE", "EX300", "");
    std::vector<SCSIInfo> disks = probe();
    ASSERT_EQ(disks.size(), 3U);
    EXPECT_EQ(disks[0].serialNumber, "S-1");
    EXPECT_EQ(disks[0].manufacturer, "EXAMPLE ");
    EXPECT_EQ(disks[0].model, "EX600           ");
    EXPECT_EQ(disks[1].serialNumber, "S-3");
    EXPECT_EQ(disks[1].manufacturer + disks[1].model, "");
    EXPECT_EQ(disks[2].serialNumber, "");
    EXPECT_EQ(disks[2].model, "EX300           ");
    getSCSIInfo(disks);
    EXPECT_EQ(disks.size(), 6U) << "what the caller has is kept";
}

TEST_F(ScsiProbe, TakesAnyIndex) {
    for (const int index : {-1, INT_MIN, 26, 1000, INT_MAX}) {
        EXPECT_EQ(getSCSISerialNumber(index, serial), 0) << index;
    }
}

TEST(DecodeSerialNumberPage, TakesABufferOfAnySize) {
    const std::string page = serialNumberReply("S-1");
    const auto* const bytes = reinterpret_cast<const unsigned char*>(page.data());
    const char* const expected[] = {"", "", "", "", "", "S", "S-", "S-1"};
    for (std::size_t size = 0; size <= page.size(); ++size) {
        std::string text = "left over";
        EXPECT_TRUE(decodeSerialNumberPage(bytes, size, text));
        EXPECT_EQ(text, expected[size]) << size;
    }
}

}  // namespace
}  // namespace QZ
