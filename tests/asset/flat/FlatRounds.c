/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */

/*
 * flat-rounds SECONDS: writes and reads a lease and the personalised pairs through the flat
 * interface for so long, at full speed, while others do the same to the same file. Prints the
 * rounds; says what was not whole, or was late, and ends with 1 then.
 */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "StampedText.h"
#include "tavqz/AssetFlat.h"

/* Whoever waits longer for a file that is locked for milliseconds was forgotten. */
enum { LONGEST_ROUND = 8 };
enum { PAIRS = 5 };

static int failures = 0;

static void expect(int isRight, const char* what, const char* found) {
    if (!isRight) {
        (void)fprintf(stderr, "%s: \"%s\"\n", what, found);
        ++failures;
    }
}

/* A setter stores all pairs as this process knows them; read afresh they are anybody's. */
static void passPairs(unsigned round) {
    char text[64 * STAMPED_SIZE];
    writeStampedText(text, "flat", round * 4057);
    if (round % 2 == 0) {
        (void)setCSDetailsPersonalizedDataLabel(text, round / 2 % PAIRS);
    } else {
        (void)setCSDetailsPersonalizedDataData(text, round / 2 % PAIRS);
    }
    AssetIDinit();
    expect(getPICount() > 0, "lost parts", "");
    for (unsigned i = 0; i < PAIRS; ++i) {
        (void)getCSDetailsPersonalizedDataLabel(text, i);
        expect(isStampedText(text), "torn label", text);
        (void)getCSDetailsPersonalizedDataData(text, i);
        expect(isStampedText(text), "torn data", text);
    }
}

static void passRound(unsigned round) {
    char text[64 * STAMPED_SIZE];
    writeStampedText(text, "flat", round * 7919);
    (void)setLeaseLessor(text);
    getLeaseLessor(text);
    expect(isStampedText(text), "torn lessor", text);
    (void)setLeaseBuyout(stampedNumber(round));
    (void)snprintf(text, sizeof text, "%u", getLeaseBuyout());
    expect(isStampedNumber((unsigned)strtoul(text, NULL, 10)), "torn buyout", text);
    (void)setLeaseEndDate(round % 2 == 0 ? "2027-01-31" : "2033-11-29");
    getLeaseEndDate(text);
    expect(strcmp(text, "20270131000000.000000+000") == 0 ||
               strcmp(text, "20331129000000.000000+000") == 0,
           "torn end date", text);
    getCSDetailsOwnerName(text);
    expect(strcmp(text, "Renée Müller") == 0, "lost owner", text);
    passPairs(round);
}

int main(int count, char** arguments) {
    const long seconds = count == 2 ? strtol(arguments[1], NULL, 10) : 0;
    const time_t end = time(NULL) + seconds;
    AssetIDinit();
    unsigned round = 0;
    for (time_t start = time(NULL); start < end && failures == 0; start = time(NULL)) {
        passRound(round++);
        expect(time(NULL) - start <= LONGEST_ROUND, "late", "a round");
    }
    (void)printf("%u rounds through the flat interface\n", round);
    return failures == 0 && round > 0 ? 0 : 1;
}
