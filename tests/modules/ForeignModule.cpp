// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstdlib>

extern "C" int foreignAnswer();

extern "C" __attribute__((visibility("default"))) void* PegasusCreateProvider(const void*) {
    return nullptr;
}

namespace {

// As the real one's does among the names of another library: it ends the program.
__attribute__((constructor)) void _start() {
    if (foreignAnswer() == 42) {
        std::abort();
    }
}

}  // namespace
