// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// What a built module shows of the VPD record, held against the table of its fields: libraries in
// the field resolve every setter by name.

#include <cxxabi.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

#include "tavqz/VPD.h"

namespace {

// As the loader spells it.
std::string _demangled(const std::string& symbol) {
    int status = 0;
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    std::string result = status == 0 ? text : symbol;
    std::free(text);
    return result;
}

// The symbol of a function that takes that type, from the compiler's own spelling.
template <class Value>
std::string _parameter() {
    return _demangled(typeid(Value).name());
}

std::set<std::string> _exported() {
    std::ifstream lines(EXPORTS_FILE);
    EXPECT_TRUE(lines.is_open());
    std::set<std::string> symbols;
    for (std::string line; std::getline(lines, line);) {
        const std::string name = _demangled(line.substr(0, line.find(' ')));
        if (name.rfind("VPD::", 0) == 0 || name.find("for VPD") != std::string::npos ||
            name == "VpdLogItem" || name == "dump_vpd_buffer") {
            symbols.insert(name);
        }
    }
    return symbols;
}

TEST(VpdExports, AreThoseOfTheTable) {
    std::set<std::string> expected{
        "VPD::VPD()", "VPD::~VPD()", "VPD::isVPDValid() const", "VPD::setIsVPDValid(bool)",
        "VPD::set_VB_IMAGE_VERSION()", "VPD::get_string[abi:cxx11](int) const",
        "VPD::get_int(int) const", "VPD::get_byte(int) const",
        "VPD::get_cal(int, VPD::GREG_CAL*) const", "VPD::get_mfd(int, VPD::MFG_DATE*) const",
        "VPD::get_byte_vector(int) const", "VPD::get_mac_address_vector(int) const",
        "VPD::get_desc_vector(int) const", "VpdLogItem", "dump_vpd_buffer",
        // For libraries that a sanitizer watches.
        "typeinfo for VPD", "typeinfo name for VPD", "vtable for VPD"};
#define ADD_SETTER(family, name, id, type) \
    expected.insert("VPD::set_" #family "_" #name "(" + _parameter<VPD::type>() + ")");
    TAVQZ_VPD_FIELDS(ADD_SETTER)
    EXPECT_EQ(expected.size(), 18U + 59U);
    EXPECT_THAT(_exported(), testing::ContainerEq(expected));
}

TEST(VpdExports, KeepTheirNamesOnEveryArchitecture) {
    std::ifstream lines(EXPORTS_FILE);
    const std::string text{std::istreambuf_iterator<char>(lines), std::istreambuf_iterator<char>()};
    const std::string string = "NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE";
    for (const std::string& symbol : {std::string("_ZN3VPD12set_FB_VPDIDEi"),
                                      std::string("_ZN3VPD24set_FIRMWARE_IMAGE_VALIDEh"),
                                      "_ZN3VPD24set_EEPROM_SERIAL_NUMBERE" + string,
                                      std::string("_ZN3VPD22set_VB_IMAGE_TIMESTAMPENS_8GREG_CALE"),
                                      std::string("_ZN3VPD11set_FB_UUIDESt6vectorIhSaIhEE")}) {
        EXPECT_NE(text.find(symbol + " "), std::string::npos) << symbol;
    }
}

}  // namespace
