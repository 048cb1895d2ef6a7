// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "Clock.h"
#include "PropertyFile.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;

namespace {

constexpr int Keys = 8;

std::wstring keyOf(int index) {
    return L"KEY." + std::to_wstring(index);
}

// Saves all keys with one and the same number, and longer each time so that the sizes differ.
void saveAll(const std::wstring& path, unsigned number) {
    PropertyFile file(path);
    file.open(3);
    for (int index = 0; index < Keys; ++index)
        file.setProperty(keyOf(index), std::to_wstring(number) + std::wstring(number % 50, L'.'));
    file.close();
}

}  // namespace

TEST(PropertyFileCrash, LeavesOneWholeSave) {
    const TemporaryFolder folder;
    const std::wstring path = make_wstring(folder.file("asset.dat"));
    saveAll(path, 0);
    const std::int64_t end = Clock::current().milliseconds() + 2000;
    int seen = 0;
    for (unsigned round = 0; round < 60 && Clock::current().milliseconds() < end; ++round) {
        ChildProcess saver([&] {
            for (unsigned number = 1;; ++number)
                saveAll(path, number);
            return true;
        });
        Clock::current().sleepMilliseconds(5 + round % 13);
        saver.kill();
        PropertyFile file(path);
        file.open(1);
        const std::wstring first = file.getProperty(keyOf(0));
        ASSERT_FALSE(first.empty());
        for (int index = 1; index < Keys; ++index)
            ASSERT_EQ(first, file.getProperty(keyOf(index)));
        seen += first != L"0" ? 1 : 0;
    }
    EXPECT_GT(seen, 0) << "no child ever saved";
    // A number that no child reached: neither a lock nor a file left behind is in its way.
    saveAll(path, 1000000007);
    EXPECT_FALSE(folder.contains("asset.dat.new"));
}

TEST(PropertyFileCrash, LosesNoChangeOfTwoProcesses) {
    constexpr int Rounds = 50;
    const TemporaryFolder folder;
    const std::wstring path = make_wstring(folder.file("asset.dat"));
    const auto count = [&] {
        for (int round = 0; round < Rounds; ++round) {
            PropertyFile file(path);
            file.open(3);
            const std::wstring old = file.getProperty(L"COUNT");
            file.setProperty(L"COUNT", std::to_wstring(old.empty() ? 1 : std::stoi(old) + 1));
            file.close();
        }
        return true;
    };
    ChildProcess first(count);
    ChildProcess second(count);
    EXPECT_TRUE(first.succeeds());
    EXPECT_TRUE(second.succeeds());
    EXPECT_EQ("COUNT=100\n", folder.read("asset.dat"));
}
