// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyEscape.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using namespace QZ;

namespace {

// All texts of up to so many of these characters.
std::vector<std::string> allTexts(std::string_view characters, std::size_t longest) {
    std::vector<std::string> texts{""};
    std::size_t begin = 0;
    for (std::size_t length = 1; length <= longest; ++length) {
        const std::size_t end = texts.size();
        for (; begin != end; ++begin) {
            for (const char character : characters)
                texts.push_back(texts[begin] + character);
        }
    }
    return texts;
}

}  // namespace

TEST(PropertyEscape, ReadsAsWhatItUnescapesTo) {
    const std::vector<std::string> writtens = allTexts("\\nx0 ", 4);
    const std::vector<std::string> texts = allTexts("\\nx0 \n", 3);
    for (const std::string& written : writtens) {
        const std::string plain = unescape(written);
        for (const std::string& text : texts)
            ASSERT_EQ(plain == text, readsAs(written, text)) << written << " as " << text;
        EXPECT_TRUE(readsAs(written, plain)) << written;
    }
}

TEST(PropertyEscape, TakesABackslashOfItsOwnForAnEscape) {
    EXPECT_TRUE(readsAs("\\\\", "\\"));
    EXPECT_FALSE(readsAs("\\\\", "\\\\"));
    EXPECT_TRUE(readsAs("\\q", "\\q"));
}
