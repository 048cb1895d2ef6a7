// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "NeededLibraries.h"

#include <elf.h>
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>

#include "TemporaryFolder.h"

namespace QZ {
namespace {

using testing::Contains;
using testing::IsEmpty;

std::string _library() {
    std::ifstream stream(TEST_LIBRARY, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

class NeededLibraries : public testing::Test {
protected:
    std::vector<std::string> needed(const std::string& bytes) {
        return neededLibraries(_folder.write("library.so", bytes));
    }

private:
    TemporaryFolder _folder;
};

TEST_F(NeededLibraries, AreNamedAsTheLinkerWroteThem) {
    EXPECT_THAT(neededLibraries(TEST_LIBRARY), Contains("libm.so.6"));
    EXPECT_EQ(needed(_library()), neededLibraries(TEST_LIBRARY));
}

TEST_F(NeededLibraries, AreNoneOfWhatIsNoLibrary) {
    EXPECT_THAT(neededLibraries("no/such/file.so"), IsEmpty());
    EXPECT_THAT(needed(""), IsEmpty());
    EXPECT_THAT(needed("INPUT(libc.so.6)\n"), IsEmpty());
}

TEST_F(NeededLibraries, AreNoneOfTheOtherWordSize) {
    std::string bytes = _library();
    bytes[EI_CLASS] = bytes[EI_CLASS] == ELFCLASS64 ? ELFCLASS32 : ELFCLASS64;
    EXPECT_THAT(needed(bytes), IsEmpty());
}

// Neither ends the program, nor takes long.
TEST_F(NeededLibraries, EndWhereADamagedFileEnds) {
    const std::string bytes = _library();
    for (std::size_t length = 0; length < bytes.size(); length += 97) {
        (void)needed(bytes.substr(0, length));
    }
    for (std::size_t at = EI_NIDENT; at < 4096 && at < bytes.size(); at += 8) {
        std::string damaged = bytes;
        damaged.replace(at, 4, "\xFF\xFF\xFF\x7F");
        (void)needed(damaged);
    }
    EXPECT_EQ(needed(bytes), neededLibraries(TEST_LIBRARY));
}

}  // namespace
}  // namespace QZ
