// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IdeProbe.h"

#include <atomic>
#include <functional>
#include <thread>

#include "DeviceParts.h"
#include "InventoryMachine.h"

namespace QZ {
namespace {

class IdeProbe : public InventoryMachine {
protected:
    void writeDrive(char letter, const std::string& text) const {
        writeFile(std::string("proc/ide/hd") + letter + "/identify", text);
    }

    static std::vector<IDEInfo> probe() {
        std::vector<IDEInfo> drives;
        getIDEInfoDirect(drives);
        return drives;
    }

    char bytes[512] = {};
};

TEST_F(IdeProbe, GivesModelAndSerialNumberOfEachDrive) {
    writeDrive('a', IdentifyBuilder::drive("EXAMPLE EX-40", "EXI-17").build());
    writeDrive('z', IdentifyBuilder::drive("SAMPLE CD", "S-2").build());
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[0].model, "EXAMPLE EX-40" + std::string(27, ' '));
    EXPECT_EQ(drives[0].serialNumber, std::string(14, ' ') + "EXI-17");
    EXPECT_EQ(drives[1].model, "SAMPLE CD" + std::string(31, ' '));
    EXPECT_EQ(drives[1].serialNumber, std::string(17, ' ') + "S-2");
}

TEST_F(IdeProbe, AppendsToWhatTheCallerHas) {
    writeDrive('a', IdentifyBuilder::drive("EXAMPLE", "1").build());
    std::vector<IDEInfo> drives = {{"kept", "too"}};
    getIDEInfoDirect(drives);
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[0].model, "kept");
}

TEST_F(IdeProbe, KeepsTextsThatFillTheirFields) {
    const std::string model = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcd";
    writeDrive('b', IdentifyBuilder::drive(model, "0123456789ABCDEFGHIJ").build());
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 1U);
    EXPECT_EQ(drives[0].model, model);
    EXPECT_EQ(drives[0].serialNumber, "0123456789ABCDEFGHIJ");
}

TEST_F(IdeProbe, KeepsTextsThatAreAllBlanks) {
    writeDrive('a', IdentifyBuilder::drive("", "").build());
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 1U);
    EXPECT_EQ(drives[0].model, std::string(40, ' '));
    EXPECT_EQ(drives[0].serialNumber, std::string(20, ' '));
}

TEST_F(IdeProbe, EndsATextAtItsFirstNul) {
    writeDrive('a', IdentifyBuilder().text(10, "SER").text(27, "MODE").build());
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 1U);
    EXPECT_EQ(drives[0].model, "MODE");
    EXPECT_EQ(drives[0].serialNumber, "SER");
}

TEST_F(IdeProbe, PassesBytesOfAnyValueOn) {
    writeDrive('a', IdentifyBuilder::drive("\xFF\x01\x80", "\xC3").build());
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 1U);
    EXPECT_EQ(drives[0].model.substr(0, 4), "\xFF\x01\x80 ");
}

TEST_F(IdeProbe, LeavesADriveOutWhoseFileIsShort) {
    const std::string text = IdentifyBuilder::drive("EXAMPLE", "1").build();
    writeDrive('a', text.substr(0, 350));
    writeDrive('b', "");
    EXPECT_TRUE(probe().empty());
    EXPECT_EQ(readIdentify('a', bytes, sizeof bytes), 0);
    writeDrive('a', text.substr(0, 351));
    EXPECT_EQ(probe().size(), 1U);
}

TEST_F(IdeProbe, LeavesADriveOutWhoseFileHasNoDigits) {
    writeDrive('a', std::string(600, 'F'));
    EXPECT_TRUE(probe().empty());
}

TEST_F(IdeProbe, FindsNothingOnAMachineWithoutDrives) {
    EXPECT_TRUE(probe().empty());
    EXPECT_EQ(readIdentify('a', bytes, sizeof bytes), 0);
}

// The buffer is one for all drives, and a file may have few digits among many characters.
TEST_F(IdeProbe, LeavesBytesThatADriveDoesNotSendAsTheDriveBeforeLeftThem) {
    writeDrive('a', IdentifyBuilder::drive("EXAMPLE", "FIRST").build());
    writeDrive('b', std::string(200, '2') + std::string(300, ' '));
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 2U);
    EXPECT_EQ(drives[1].serialNumber, std::string(20, '\x22'));
    EXPECT_EQ(drives[1].model, std::string(40, '\x22'));
    writeDrive('b', std::string(10, '2') + std::string(400, ' '));
    const std::vector<IDEInfo> again = probe();
    ASSERT_EQ(again.size(), 2U);
    EXPECT_EQ(again[1].serialNumber, again[0].serialNumber);
}

TEST_F(IdeProbe, LooksAtTheFirst512CharactersOnly) {
    writeDrive('a', std::string(508, ' ') + "4142" + "4344");
    ASSERT_EQ(readIdentify('a', bytes, sizeof bytes), 2);
    EXPECT_STREQ(bytes, "AB");
}

TEST_F(IdeProbe, TakesADriveWhoseFileIsLargerThanAnyKernelMakes) {
    writeDrive('a', IdentifyBuilder::drive("EXAMPLE", "LONG").build() + std::string(1 << 20, ' '));
    const std::vector<IDEInfo> drives = probe();
    ASSERT_EQ(drives.size(), 1U);
    EXPECT_EQ(drives[0].serialNumber, std::string(16, ' ') + "LONG");
}

// The second drive's texts are the first one's, for it sends none of its own.
TEST_F(IdeProbe, LendsItsBufferToOneThreadAtATime) {
    constexpr int rounds = 300;
    const std::string shortAnswer = std::string(10, '2') + std::string(400, ' ');
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const std::string serial = std::string(16, letter) + "9999";
        writeDrive(letter, letter % 2 != 0 ? IdentifyBuilder::drive("EXAMPLE", serial).build()
                                           : shortAnswer);
    }
    const auto count = [](std::atomic<int>& mixed) {
        for (int round = 0; round < rounds; ++round) {
            const std::vector<IDEInfo> drives = probe();
            for (std::size_t i = 0; i < drives.size(); ++i) {
                const auto letter = static_cast<char>('a' + i - i % 2);
                mixed += drives[i].serialNumber != std::string(16, letter) + "9999" ? 1 : 0;
            }
        }
    };
    std::atomic<int> mixed{0};
    std::thread other(count, std::ref(mixed));
    count(mixed);
    other.join();
    EXPECT_EQ(mixed, 0);
}

TEST_F(IdeProbe, StopsAtTheSizeOfTheBuffer) {
    writeDrive('a', IdentifyBuilder::drive("EXAMPLE", "1").build());
    EXPECT_EQ(readIdentify('a', bytes, 0), 0);
    EXPECT_EQ(readIdentify('a', bytes, -1), 0);
    bytes[3] = 'x';
    EXPECT_EQ(readIdentify('a', bytes, 3), 3);
    EXPECT_EQ(bytes[3], 'x');
    // 512 characters are 102 words and half of the next.
    EXPECT_EQ(readIdentify('a', bytes, sizeof bytes), 205);
}

TEST(DecodeIdentify, TakesLowerCaseDigitsAndPassesOverAllElse) {
    char bytes[8] = {};
    ASSERT_EQ(decodeIdentify("4a 4b\nAF 4-c\t4\nd", bytes, 8), 4);
    EXPECT_STREQ(bytes, "JKLM");
}

TEST(DecodeIdentify, DropsAHalfByte) {
    char bytes[8] = {};
    EXPECT_EQ(decodeIdentify("414", bytes, 8), 1);
    EXPECT_EQ(decodeIdentify("4", bytes, 8), 0);
    EXPECT_EQ(decodeIdentify("", bytes, 8), 0);
}

TEST(DecodeIdentify, PutsTheFirstDigitIntoTheHighHalf) {
    char bytes[2] = {};
    ASSERT_EQ(decodeIdentify("f0", bytes, 1), 1);
    EXPECT_EQ(bytes[0], '\xF0');
}

}  // namespace
}  // namespace QZ
