// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// What the test device library expects of the program that loads it: here nobody listens.

extern "C" int entryPointCalled(const char*) {
    return 0;
}

extern "C" int entryPointCalledWithBus(const char*, const void*) {
    return 0;
}
