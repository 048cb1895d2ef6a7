// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CsvText.h"

#include <gmock/gmock.h>

#include "Error.h"

using namespace QZ;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::vector<std::string>> _fields(const std::string& text) {
    std::vector<std::vector<std::string>> all;
    for (const CsvRecord& record : parseCsv(text)) {
        all.push_back(record.fields);
    }
    return all;
}

std::string _refusal(const std::string& text) {
    try {
        parseCsv(text);
    } catch (const Error& error) {
        return error.what();
    }
    return "none";
}

}  // namespace

TEST(CsvText, ReadsWhatItWrites) {
    const std::vector<std::string> fields = {"a", "", "b,c", "\"d\"", "e\r\nf", ";", " g "};
    EXPECT_EQ("a,,\"b,c\",\"\"\"d\"\"\",\"e\r\nf\",;, g \r\n", csvLine(fields));
    EXPECT_THAT(_fields(csvLine(fields)), ElementsAre(fields));
}

TEST(CsvText, ReadsLinesAsProgramsEndThem) {
    const std::vector<std::string> row = {"a", "b"};
    EXPECT_THAT(_fields("a,b\r\na,b\na,b"), ElementsAre(row, row, row));
    EXPECT_THAT(_fields("\r\n\na,b\n\n"), ElementsAre(row));
    EXPECT_THAT(_fields(""), IsEmpty());
    EXPECT_THAT(_fields(","), ElementsAre(std::vector<std::string>{"", ""}));
}

TEST(CsvText, ReadsWhatSpreadsheetsPutThere) {
    EXPECT_THAT(
        _fields("\xEF\xBB\xBF"
                "a;b\r\nc,d;\"e;f\"\r\n"),
        ElementsAre(std::vector<std::string>{"a", "b"}, std::vector<std::string>{"c,d", "e;f"}));
    EXPECT_THAT(_fields("a,b;c\n"), ElementsAre(std::vector<std::string>{"a", "b;c"}));
}

TEST(CsvText, KnowsTheLineOfARecord) {
    const std::vector<CsvRecord> records = parseCsv("a\n\"b\nc\"\n\nd\n");
    ASSERT_EQ(3U, records.size());
    EXPECT_EQ(1U, records[0].line);
    EXPECT_EQ(2U, records[1].line);
    EXPECT_EQ(5U, records[2].line);
}

TEST(CsvText, RefusesQuotesWhereNoneMayStand) {
    EXPECT_EQ("line 2: a quote that is never closed", _refusal("a\n\"b"));
    EXPECT_EQ("line 1: a quote in the middle of a field", _refusal("a\"b\"\n"));
    EXPECT_EQ("line 3: text behind a closing quote", _refusal("a\nb\n\"c\"d\n"));
    EXPECT_EQ("line 1: text behind a closing quote", _refusal("\"a\"\rb"));
}
