/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */
#pragma once

#include "tavqz/AssetMembers.h"
#include "tavqz/Export.h"

/*
 * The asset records and the part list as plain functions, for C and C++.
 *
 * - Call AssetIDinit() once before anything else, and again to see parts and personalised pairs
 *   afresh; not while another thread is in a function for parts or personalised pairs. All other
 *   functions may be called by any thread, and by several processes beside a CIM server.
 * - Each call reads "asset.dat" and writes it back, a reading one too. To change several fields at
 *   once is to call several functions: others may see the state in between.
 * - Buffers are the caller's and get the text with its NUL; there is no limit: 1024 bytes are
 *   enough for what people enter, but a text in the file may be longer. Texts are UTF-8.
 * - Dates are read as CIM datetime text, "20270131000000.000000+060": the six digits behind the
 *   point count milliseconds, and the offset in minutes stands behind a fixed plus sign, so that
 *   an hour west of UTC reads "+-060". An unset date is all zeros. They are written in that form,
 *   in ISO 8601, or as a day, "2027-01-31"; empty text clears a date.
 * - Setters return 0, and getters give empty text or 0 for what they cannot get: nothing is thrown,
 *   and no reason is told. An index out of range, or a null pointer, changes nothing.
 */

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the parts and the personalised pairs, and lets go of those read before. */
TAVQZ_EXPORT void AssetIDinit(void);

#define TAVQZ_TEXT_GETTER(record, field) TAVQZ_EXPORT void get##record##field(char* text);
#define TAVQZ_TEXT_SETTER(record, field) TAVQZ_EXPORT int set##record##field(const char* text);
#define TAVQZ_BYTE_SETTER(record, field) TAVQZ_EXPORT int set##record##field(unsigned char value);
#define TAVQZ_NUMBER_GETTER(record, field) TAVQZ_EXPORT unsigned int get##record##field(void);
#define TAVQZ_NUMBER_SETTER(record, field) TAVQZ_EXPORT int set##record##field(unsigned int value);
#define TAVQZ_PART_GETTER(field) TAVQZ_EXPORT void getPI##field(char* text, int index);
#define TAVQZ_PERSONALIZED(field)                                                           \
    TAVQZ_EXPORT char* getCSDetailsPersonalizedData##field(char* text, unsigned int index); \
    TAVQZ_EXPORT int setCSDetailsPersonalizedData##field(const char* text, unsigned int index);

TAVQZ_ASSET_TEXTS(TAVQZ_TEXT_GETTER)
TAVQZ_ASSET_TEXTS(TAVQZ_TEXT_SETTER)
TAVQZ_ASSET_TEXTS_READ_ONLY(TAVQZ_TEXT_GETTER)
TAVQZ_ASSET_DATES(TAVQZ_TEXT_GETTER)
TAVQZ_ASSET_DATES(TAVQZ_TEXT_SETTER)
TAVQZ_ASSET_BYTES(TAVQZ_NUMBER_GETTER)
TAVQZ_ASSET_BYTES(TAVQZ_BYTE_SETTER)
TAVQZ_ASSET_NUMBERS(TAVQZ_NUMBER_GETTER)
TAVQZ_ASSET_NUMBERS(TAVQZ_NUMBER_SETTER)
TAVQZ_ASSET_NUMBERS_READ_ONLY(TAVQZ_NUMBER_GETTER)

/* Parts and personalised pairs are counted from 0; the pairs are five. A personalised getter reads
 * what AssetIDinit() or a setter left, never the file, and returns its buffer. */
TAVQZ_EXPORT int getPICount(void);
TAVQZ_PART_TEXTS(TAVQZ_PART_GETTER)
TAVQZ_PERSONALIZED_TEXTS(TAVQZ_PERSONALIZED)

/* Packs a value for those who pass several in one buffer: a tag (0), then the value, both 32-bit in
 * the machine's byte order. Returns the address behind it. */
TAVQZ_EXPORT void* packI(void* at, int value);

#undef TAVQZ_TEXT_GETTER
#undef TAVQZ_TEXT_SETTER
#undef TAVQZ_BYTE_SETTER
#undef TAVQZ_NUMBER_GETTER
#undef TAVQZ_NUMBER_SETTER
#undef TAVQZ_PART_GETTER
#undef TAVQZ_PERSONALIZED

#ifdef __cplusplus
}

#include <string>
#include <vector>

extern "C" {

/* The same for a text: tag 1, its length in bytes, its bytes and a NUL, unaligned. */
TAVQZ_EXPORT void* packS(void* at, std::string value);
/* Tags 2 and 3, the number of elements, then each element as packI or packS writes it. */
TAVQZ_EXPORT void* packAI(void* at, std::vector<int> values);
TAVQZ_EXPORT void* packAS(void* at, std::vector<std::string> values);
}
#endif
