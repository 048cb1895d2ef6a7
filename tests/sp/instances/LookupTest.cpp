// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// Which questions look for a text at all. The linker puts this program's functions between the
// module and the two that a lookup asks; the names are as they are linked.

#include <gtest/gtest.h>

#include "ServiceProcessorMachine.h"

namespace {

int _lookups = 0;

}  // namespace

std::string __real_getLanguageId() __asm__("__real__ZN2QZ6Locale13getLanguageIdB5cxx11Ev");
std::string __wrap_getLanguageId() __asm__("__wrap__ZN2QZ6Locale13getLanguageIdB5cxx11Ev");

std::string __wrap_getLanguageId() {
    ++_lookups;
    return __real_getLanguageId();
}

TEST(ServiceProcessorLookup, AsksNoCatalogueForAFamilyThatIsNotKnown) {
    const ServiceProcessorMachine machine("");
    _lookups = 0;
    for (const int type : {-1, 0, 6, 9, 11, 99, 102}) {
        EXPECT_EQ(machine.provider->getStringForSPType(type, false), L"");
        EXPECT_EQ(machine.provider->getStringForSPType(type, true), L"");
    }
    EXPECT_EQ(_lookups, 0);
    machine.provider->getStringForSPType(3, true);
    EXPECT_EQ(_lookups, 1) << "else nothing was tested";
    machine.provider->getStringForSPType(3, true);
    EXPECT_EQ(_lookups, 2) << "a language may change between two requests";
}
