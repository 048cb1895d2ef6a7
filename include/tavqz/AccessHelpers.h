// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include <cstdint>

#include "tavqz/Export.h"

// Plain functions that the module exports to the libraries it loads. C symbols, none of which
// throws. Texts that are char* for the sake of their callers are read only and not kept. Unless
// it says otherwise, any thread may call.

extern "C" {

// The diagnostic log. These do nothing: a program that wants the module's log defines
// addLogItem (and exports it), and is called instead. tag is usually the calling operation.
TAVQZ_EXPORT void openLog();
TAVQZ_EXPORT void initLog(char* name);
TAVQZ_EXPORT void addLogItem(char* tag, char* text);
TAVQZ_EXPORT void closeLog();

// Do nothing; dumpdata returns 0.
TAVQZ_EXPORT void IncrementLibraryUsageCount();
TAVQZ_EXPORT int dumpdata(unsigned char* data);

// Runs routine, a void* (*)(void*), with arg on a new thread and stores that in *thread, to be
// ended with endThreadProcess. 1 on success, 0 when no thread could be made: the opposite of
// cThreadLib::threadStart.
TAVQZ_EXPORT int StartThread(void* routine, void* arg, unsigned flags, pthread_t* thread);

// Cancels the thread, waits until it has ended, and returns 0; an error number when it could not
// be cancelled (then nobody waits) or waited for.
TAVQZ_EXPORT int endThreadProcess(pthread_t thread);

// The local time as "%d %b %y %H:%M:%S" in a buffer of size bytes, its NUL included; empty text
// where it does not fit, nothing where size is not positive. Returns buffer.
TAVQZ_EXPORT char* getSysTime(char* buffer, int size);

// The two or four bytes at buffer[offset] as a number. The caller vouches that they are there.
TAVQZ_EXPORT std::uint16_t getUShortFromBufferLSBFirst(unsigned char* buffer, int offset);
TAVQZ_EXPORT std::uint32_t getULongFromBufferLSBFirst(unsigned char* buffer, int offset);
TAVQZ_EXPORT std::uint32_t getULongFromBufferMSBFirst(unsigned char* buffer, int offset);

// Writes count bytes from buffer[offset] on as 2 * count upper-case hexadecimal digits, without
// a NUL behind them.
TAVQZ_EXPORT void bytesToString(unsigned char* buffer, int offset, int count, unsigned char* out);

// The number that the text's first hexadecimal digits make, at most length of them, behind "0x"
// if it begins so. It ends at a NUL, a comma or any other character, and is 0 without digits.
// Beyond 32 bits the upper ones are lost. Lower-case letters count only among the text's first
// length characters, the two of "0x" included.
TAVQZ_EXPORT int _httoi(char const* text, int length);
}
