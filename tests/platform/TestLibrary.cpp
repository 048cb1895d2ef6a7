// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// What DynamicLibraryTest loads.
extern "C" __attribute__((visibility("default"))) int answer() {
    return 42;
}
