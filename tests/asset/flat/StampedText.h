/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */
#pragma once

/* Texts that show whether they are whole: "flat 7 xxxxxxx", with as many of the last as the number
 * says; and numbers that do, as 0x33333333. */

enum { STAMPED_SIZE = 1024 };

#ifdef __cplusplus
extern "C" {
#endif

/* Of STAMPED_SIZE bytes at most, whatever the number. The writer is "flat" or "cim". */
void writeStampedText(char* to, const char* writer, unsigned int number);
unsigned int stampedNumber(unsigned int number);

/* 1, or 0 for what nobody wrote so. */
int isStampedText(const char* text);
int isStampedNumber(unsigned int number);

#ifdef __cplusplus
}
#endif
