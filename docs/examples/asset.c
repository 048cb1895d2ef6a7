/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */

/*
 * asset: notes when this machine was inventoried and for whom, and prints what is known of it.
 *
 *     cc -std=c11 asset.c -lAssetIDProvider -o asset
 */

#include <stdio.h>
#include <tavqz/AssetFlat.h>

/* Nobody is told how long a text is, and people do not enter more than 1024 bytes. */
enum { ROOM = 64 * 1024 };

static char text[ROOM];

/* Prints a CIM datetime text as a day. */
static void printDay(const char* label, const char* date) {
    if (date[0] == '0') {
        (void)printf("%s: not set\n", label);
    } else {
        (void)printf("%s: %.4s-%.2s-%.2s\n", label, date, date + 4, date + 6);
    }
}

int main(void) {
    /* Before anything else, and again to see parts and personalised pairs afresh. */
    AssetIDinit();

    /* Setters always return 0: whether it worked is seen by reading. */
    (void)setCSDetailsOwnerName("Renée Müller");
    (void)setCSDetailsLastInventoried("2026-11-21");
    (void)setCSDetailsPersonalizedDataLabel("Cost centre", 0);
    (void)setCSDetailsPersonalizedDataData("70-1144", 0);
    (void)setLeaseTerm(36);

    getCSDetailsSystemName(text);
    (void)printf("name: %s\n", text);
    getCSDetailsOwnerName(text);
    (void)printf("owner: %s\n", text);
    getCSDetailsLastInventoried(text);
    printDay("inventoried", text);
    (void)printf("months of lease: %u\n", getLeaseTerm());
    getLeaseEndDate(text);
    printDay("end of lease", text);
    for (unsigned int i = 0; i < 5; ++i) {
        if (getCSDetailsPersonalizedDataLabel(text, i)[0] != '\0') {
            (void)printf("%s: ", text);
            (void)printf("%s\n", getCSDetailsPersonalizedDataData(text, i));
        }
    }
    for (int i = 0; i < getPICount(); ++i) {
        getPITag(text, i);
        (void)printf("%s", text);
        getPISerialNumber(text, i);
        (void)printf("%s%s\n", text[0] == '\0' ? "" : " has serial number ", text);
    }
    return 0;
}
