// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Catalogues.h"

namespace {

// What the check says of a German catalogue of these texts; its status in front.
std::string check(const std::string& english, const std::string& german) {
    const Catalogues catalogues;
    catalogues.add("root", english);
    catalogues.add("de", german);
    const TemporaryFolder& folder = catalogues.folder();
    const std::string command =
        CHECK_MESSAGES " " + folder.file("de.res") + " 2>" + folder.file("findings");
    const bool isFit = std::system(command.c_str()) == 0;  // NOLINT(cert-env33-c): our own words
    return (isFit ? "fit" : "unfit") + folder.read("findings");
}

}  // namespace

TEST(CheckMessages, AcceptsWhatTakesTheSame) {
    EXPECT_EQ("fit", check(R"(A { "%ls of %d" } B { "b" })", R"(A { "%2$d: %1$ls" } B { "be" })"));
}

TEST(CheckMessages, RefusesOtherInsertions) {
    for (const char* german : {R"(A { "%d" })", R"(A { "none" })", R"(A { "%ls %ls" })"})
        EXPECT_NE(std::string::npos, check(R"(A { "%ls" })", german).find("other insertions"));
    EXPECT_NE(std::string::npos, check(R"(A { "%ls" })", R"(A { "%s" })").find("neither"));
    EXPECT_EQ("unfit", check(R"(A { "%ls" })", R"(A { "%n" })").substr(0, 5));
}

TEST(CheckMessages, RefusesMissingAndUnknownKeys) {
    EXPECT_NE(std::string::npos, check(R"(A { "a" } B { "b" })", R"(A { "a" })").find("missing"));
    EXPECT_NE(std::string::npos, check(R"(A { "a" })", R"(A { "a" } C { "c" })").find("unknown"));
}
