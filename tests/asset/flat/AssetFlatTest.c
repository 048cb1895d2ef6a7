/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */

/*
 * Every function of the flat interface that C has, called by a C program that is linked against the
 * module. Runs on the machine that on-rack-server makes; says what failed and ends with 1 then.
 */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "tavqz/AssetFlat.h"

enum { TEXT_SIZE = 1024 };

struct TextMember {
    const char* name;
    void (*get)(char*);
    int (*set)(const char*);
};

struct ByteMember {
    const char* name;
    unsigned int (*get)(void);
    int (*set)(unsigned char);
};

struct NumberMember {
    const char* name;
    unsigned int (*get)(void);
    int (*set)(unsigned int);
};

struct ReadOnlyText {
    const char* name;
    void (*get)(char*);
};

#define MEMBER(record, field) {#record #field, get##record##field, set##record##field},
#define READ_ONLY(record, field) {#record #field, get##record##field},

static const struct TextMember texts[] = {TAVQZ_ASSET_TEXTS(MEMBER)};
static const struct TextMember dates[] = {TAVQZ_ASSET_DATES(MEMBER)};
static const struct ByteMember bytes[] = {TAVQZ_ASSET_BYTES(MEMBER)};
static const struct NumberMember numbers[] = {TAVQZ_ASSET_NUMBERS(MEMBER)};
static const struct ReadOnlyText readOnlyTexts[] = {TAVQZ_ASSET_TEXTS_READ_ONLY(READ_ONLY)};

#define COUNT(array) (sizeof(array) / sizeof((array)[0]))

static int failures = 0;

static void expectText(const char* what, const char* found, const char* expected) {
    if (strcmp(found, expected) != 0) {
        (void)fprintf(stderr, "%s is \"%s\", not \"%s\"\n", what, found, expected);
        ++failures;
    }
}

static void expectNumber(const char* what, unsigned int found, unsigned int expected) {
    if (found != expected) {
        (void)fprintf(stderr, "%s is %u, not %u\n", what, found, expected);
        ++failures;
    }
}

static void expectMember(const struct TextMember* member, const char* expected) {
    char text[TEXT_SIZE] = "untouched";
    member->get(text);
    expectText(member->name, text, expected);
}

static void setMember(const struct TextMember* member, const char* text) {
    expectNumber(member->name, (unsigned int)member->set(text), 0);
}

static int isNamed(const struct TextMember* member, const char* name) {
    return strcmp(member->name, name) == 0;
}

static void testTexts(void) {
    for (size_t i = 0; i < COUNT(texts); ++i) {
        setMember(&texts[i], texts[i].name);
        expectMember(&texts[i], texts[i].name);
    }
    /* None was stored in another's place, but for the deployment profile, another name of KELP's;
     * and null changes nothing. */
    for (size_t i = 0; i < COUNT(texts); ++i) {
        setMember(&texts[i], NULL);
        texts[i].get(NULL);
        expectMember(&texts[i], isNamed(&texts[i], "CSDetailsKELPProfile")
                                    ? "CSDetailsDeploymentProfile"
                                    : texts[i].name);
    }
    for (size_t i = 0; i < COUNT(texts); ++i) {
        setMember(&texts[i], "\"Ren\303\251e\" = M\\");
        expectMember(&texts[i], "\"Ren\303\251e\" = M\\");
        setMember(&texts[i], "");
        expectMember(&texts[i], "");
    }
}

static void testDates(void) {
    static const struct {
        const char* written;
        const char* read;
    } cases[] = {
        {"20270131123456.000012+060", "20270131123456.000012+060"},
        {"20270131123456.000012-060", "20270131123456.000012+-060"},
        {"20270131123456.000012+-060", "20270131123456.000012+-060"},
        {"2027-01-31T08:30:00.250Z", "20270131083000.000250+000"},
        {"2027-01-31", "20270131000000.000000+000"},
        {"the last day of January", "00000000000000.000000+000"},
        {"2024-02-29", "20240229000000.000000+000"},
        {"", "00000000000000.000000+000"},
    };
    for (size_t i = 0; i < COUNT(dates); ++i) {
        if (isNamed(&dates[i], "CSDetailsDateTime")) {
            continue;
        }
        for (size_t k = 0; k < COUNT(cases); ++k) {
            setMember(&dates[i], cases[k].written);
            setMember(&dates[i], NULL);
            dates[i].get(NULL);
            expectMember(&dates[i], cases[k].read);
        }
    }
    /* None is stored in another's place. */
    static const char days[] = "12345678";
    for (size_t i = 0; i < COUNT(dates); ++i) {
        char day[] = "20270100000000.000000+000";
        day[7] = days[i];
        setMember(&dates[i], day);
    }
    for (size_t i = 0; i < COUNT(dates); ++i) {
        char day[] = "20270100000000.000000+000";
        day[7] = days[isNamed(&dates[i], "CSDetailsKELPUpdateTime") ? 3 : i];
        if (!isNamed(&dates[i], "CSDetailsDateTime")) {
            expectMember(&dates[i], day);
        }
    }
}

/* The machine's clock is read; it is not set where the records are another machine's. */
static void testClock(void) {
    char now[TEXT_SIZE];
    char later[TEXT_SIZE];
    const time_t before = time(NULL);
    getCSDetailsDateTime(now);
    expectNumber("setCSDetailsDateTime", (unsigned int)setCSDetailsDateTime("2001-01-01"), 0);
    getCSDetailsDateTime(later);
    const time_t after = time(NULL);
    expectNumber("the clock was set back", before <= after, 1);
    expectNumber("the clock's length", (unsigned int)strlen(now), 25);
    expectNumber("the clock's order", strncmp(now, later, 14) <= 0, 1);
    expectNumber("the clock's century", strncmp(now, "20", 2) == 0, 1);
}

static void testNumbers(void) {
    for (size_t i = 0; i < COUNT(bytes); ++i) {
        expectNumber(bytes[i].name, (unsigned int)bytes[i].set((unsigned char)(255 - i)), 0);
    }
    for (size_t i = 0; i < COUNT(numbers); ++i) {
        expectNumber(numbers[i].name, (unsigned int)numbers[i].set(4294967295U - (unsigned)i), 0);
    }
    for (size_t i = 0; i < COUNT(bytes); ++i) {
        expectNumber(bytes[i].name, bytes[i].get(), 255U - (unsigned)i);
        (void)bytes[i].set(0);
        expectNumber(bytes[i].name, bytes[i].get(), 0);
    }
    for (size_t i = 0; i < COUNT(numbers); ++i) {
        expectNumber(numbers[i].name, numbers[i].get(), 4294967295U - (unsigned)i);
        (void)numbers[i].set(0);
        expectNumber(numbers[i].name, numbers[i].get(), 0);
    }
    expectNumber("the string area's size", getCSDetailsAssetIdStringAreaSize(), 1024);
}

static void testReadOnlyTexts(void) {
    static const char* const expected[] = {
        "Example Server 2U", "10325476-98BA-DCFE-8001-020304050611",
        "EXS2100417",        "EX2100-7A",
        "Example Server 2U", "rack-server",
        TAVQZ_VERSION,
    };
    for (size_t i = 0; i < COUNT(readOnlyTexts); ++i) {
        char text[TEXT_SIZE] = "untouched";
        readOnlyTexts[i].get(NULL);
        readOnlyTexts[i].get(text);
        expectText(readOnlyTexts[i].name, text, expected[i]);
    }
}

static void expectPart(int index, const char* expected) {
    char found[6 * TEXT_SIZE] = "";
    char text[TEXT_SIZE] = "untouched";
#define APPEND(field)          \
    getPI##field(NULL, index); \
    getPI##field(text, index); \
    (void)strcat(found, text); \
    (void)strcat(found, "|");
    TAVQZ_PART_TEXTS(APPEND)
    expectText("the part", found, expected);
}

static void testParts(void) {
    expectNumber("parts before AssetIDinit", (unsigned int)getPICount(), 0);
    expectPart(0, "|||||");
    AssetIDinit();
    expectNumber("parts", (unsigned int)getPICount(), 16);
    expectPart(0, "System|Example Corp|Example Server 2U -[EX2100-7A]-|EXS2100417|04|");
    expectPart(15, "SCSIDevice2|SAMPLE|Flash 2|||");
    expectPart(16, "|||||");
    expectPart(-1, "|||||");
    AssetIDinit();
    expectNumber("parts, taken afresh", (unsigned int)getPICount(), 16);
}

static void expectPair(unsigned int index, const char* label, const char* data) {
    char text[TEXT_SIZE] = "untouched";
    expectNumber("the label's buffer", getCSDetailsPersonalizedDataLabel(text, index) == text, 1);
    expectText("the label", text, label);
    expectNumber("the data's buffer", getCSDetailsPersonalizedDataData(text, index) == text, 1);
    expectText("the data", text, data);
}

static void testPersonalizedPairs(void) {
    for (unsigned int index = 0; index < 6; ++index) {
        char text[] = "label 0";
        text[6] = "012345"[index];
        expectNumber("a label", (unsigned)setCSDetailsPersonalizedDataLabel(text, index), 0);
        expectNumber("data", (unsigned)setCSDetailsPersonalizedDataData(text + 6, index), 0);
        expectNumber("null", (unsigned)setCSDetailsPersonalizedDataLabel(NULL, index), 0);
        expectNumber("null", (unsigned)setCSDetailsPersonalizedDataData(NULL, index), 0);
        expectNumber("null", getCSDetailsPersonalizedDataLabel(NULL, index) == NULL, 1);
        expectNumber("null", getCSDetailsPersonalizedDataData(NULL, index) == NULL, 1);
    }
    AssetIDinit();
    expectPair(0, "label 0", "0");
    expectPair(4, "label 4", "4");
    expectPair(5, "", "");
    expectPair(4294967295U, "", "");
}

static void testPacking(void) {
    int buffer[4] = {-1, -1, -1, -1};
    expectNumber("behind two integers", packI(packI(buffer, 7), -2) == buffer + 4, 1);
    expectNumber("the first tag", (unsigned int)buffer[0], 0);
    expectNumber("the first value", (unsigned int)buffer[1], 7);
    expectNumber("the second tag", (unsigned int)buffer[2], 0);
    expectNumber("the second value", (unsigned int)buffer[3], (unsigned int)-2);
}

int main(void) {
    if (!getenv("TAVQZ_HOST_ROOT")) {
        (void)fputs("run me through on-rack-server: I would set this machine's clock and records\n",
                    stderr);
        return 2;
    }
    testParts();
    testTexts();
    testDates();
    testClock();
    testNumbers();
    testReadOnlyTexts();
    testPersonalizedPairs();
    testPacking();
    return failures == 0 ? 0 : 1;
}
