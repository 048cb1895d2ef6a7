// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// A guest probe library of somebody else's: what it answers, and which of its two symbols it has,
// is set by the build.

#include <cstring>

extern "C" {

#ifndef WITHOUT_RUNNING
__attribute__((visibility("default"))) int running_in_xen_domU() {
    return PROBE_GUEST;
}
#endif

#ifndef WITHOUT_UUID
__attribute__((visibility("default"))) int domU_get_uuid(char* text) {
    std::strcpy(text, "6e1d0a52-5d4f-4b62-9d1c-0f5b7f1f9a11");
    return PROBE_STATUS;
}
#endif
}
