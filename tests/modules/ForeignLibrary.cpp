// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

extern "C" __attribute__((visibility("default"))) int foreignAnswer() {
    return 42;
}
