/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */
#include "StampedText.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

void writeStampedText(char* to, const char* writer, unsigned int number) {
    number %= 900;
    const int start = snprintf(to, STAMPED_SIZE, "%s %u ", writer, number);
    memset(to + start, 'x', number);
    to[(unsigned int)start + number] = '\0';
}

unsigned int stampedNumber(unsigned int number) {
    return (number % 15 + 1) * 0x11111111U;
}

int isStampedText(const char* text) {
    const char* const space = strchr(text, ' ');
    if (!space || (strncmp(text, "flat ", 5) != 0 && strncmp(text, "cim ", 4) != 0)) {
        return 0;
    }
    char* rest = NULL;
    const unsigned long number = strtoul(space, &rest, 10);
    return *rest == ' ' && strspn(rest + 1, "x") == number && strlen(rest + 1) == number;
}

int isStampedNumber(unsigned int number) {
    return number != 0 && number % 0x11111111U == 0;
}
