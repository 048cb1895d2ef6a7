// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/VPD.h"

#include <type_traits>
#include <utility>

#include "tavqz/AccessHelpers.h"

VPD::VPD() = default;

VPD::~VPD() = default;

bool VPD::isVPDValid() const {
    return _valid;
}

void VPD::setIsVPDValid(bool valid) {
    _valid = valid;
}

// NOLINTBEGIN(performance-move-const-arg,hicpp-move-const-arg): the table holds numbers too
#define TAVQZ_VPD_SETTER(family, name, id, type)    \
    int VPD::set_##family##_##name(type value) {    \
        _values.family##_##name = std::move(value); \
        return 0;                                   \
    }
TAVQZ_VPD_FIELDS(TAVQZ_VPD_SETTER)
#undef TAVQZ_VPD_SETTER
// NOLINTEND(performance-move-const-arg,hicpp-move-const-arg)

// Libraries in the field call it.
int VPD::set_VB_IMAGE_VERSION() {
    return 0;
}

template <class Value>
const Value* VPD::_find(int id, const char* accessor) const {
#define TAVQZ_VPD_FIND(family, name, fieldId, type) \
    if constexpr (std::is_same_v<type, Value>) {    \
        if (id == (fieldId)) {                      \
            return &_values.family##_##name;        \
        }                                           \
    }
    TAVQZ_VPD_FIELDS(TAVQZ_VPD_FIND)
#undef TAVQZ_VPD_FIND
    // Both are read only.
    VpdLogItem(const_cast<char*>(accessor), const_cast<char*>("Could not find the given key"));
    return nullptr;
}

std::string VPD::get_string(int id) const {
    const auto* value = _find<String>(id, "VPD::get_string");
    return value != nullptr ? *value : std::string();
}

int VPD::get_int(int id) const {
    const auto* value = _find<Int>(id, "VPD::get_int");
    return value != nullptr ? *value : -1;
}

unsigned char VPD::get_byte(int id) const {
    const auto* value = _find<Byte>(id, "VPD::get_byte");
    return value != nullptr ? *value : 255;
}

void VPD::get_cal(int id, GREG_CAL* date) const {
    const auto* value = _find<Calendar>(id, "VPD::get_cal");
    *date = value != nullptr ? *value : GREG_CAL{-1, -1, -1};
}

void VPD::get_mfd(int id, MFG_DATE* date) const {
    if (const auto* value = _find<ManufactureDate>(id, "VPD::get_mfd")) {
        *date = *value;
    }
}

std::vector<unsigned char> VPD::get_byte_vector(int id) const {
    const auto* value = _find<Bytes>(id, "VPD::get_byte_vector");
    return value != nullptr ? *value : Bytes();
}

std::vector<std::vector<unsigned char>> VPD::get_mac_address_vector(int id) const {
    const auto* value = _find<MacAddresses>(id, "VPD::get_mac_address_vector");
    return value != nullptr ? *value : MacAddresses();
}

std::vector<VPD::INTERFACE_DESCRIPTOR> VPD::get_desc_vector(int id) const {
    const auto* value = _find<Interfaces>(id, "VPD::get_desc_vector");
    return value != nullptr ? *value : Interfaces();
}

void VpdLogItem(char* function, char* text) {
    addLogItem(function, text);
}

// dumpdata knows no length.
void dump_vpd_buffer(unsigned char* buffer, int /*length*/) {
    dumpdata(buffer);
}
