// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tavqz/Export.h"
#include "tavqz/VpdFields.h"

// The kinds of vital product data that a service processor is asked for.
enum VPD_INST_TYPE : int {
    VPD_INST_UNKNOWN = 0,
    VPD_INST_PROC_BOARD = 1,
    VPD_INST_PROC_BACKPLANE = 2,
    VPD_INST_DIMM = 3,
    VPD_INST_FRONT_PANEL = 6,
    VPD_INST_DASD = 7,
    VPD_INST_DASD_2 = 8,
    VPD_INST_POWER = 9,
    VPD_INST_POWER_2 = 10,
    VPD_INST_POWER_BACKPLANE = 11,
    VPD_INST_POWER_BACKPLANE_2 = 12,
    VPD_INST_PCI_PLANAR = 13,
    VPD_INST_CPU = 14,
    VPD_INST_MGMT_PROC = 16,
    VPD_INST_PLANAR = 17,
    VPD_INST_APP_FW = 18,
    VPD_INST_BOOT_ROM_FW = 19,
    VPD_INST_REMOTE_GRAPHICS_FW = 20,
    VPD_INST_DEVICE_DRIVER = 21,
    VPD_INST_POST_BIOS = 22
};

// One record of vital product data: a board's, a power supply's, a firmware's. The module makes
// it and hands it to cDeviceLib::getVPDData, which fills it through the setters and declares it
// valid. A new record is not valid; its numbers and dates are 0, its texts and lists empty.
// Used by one thread at a time. A setter replaces the field and returns 0.
class TAVQZ_EXPORT VPD {
public:
    // Printed as month-day-year. Unknown where any member is -1.
    struct GREG_CAL {
        std::int32_t day;
        std::int32_t month;
        std::int32_t year;
    };
    // These mean what the library that fills the record says they do.
    struct MFG_DATE {
        std::int32_t first;
        std::int32_t second;
    };
    struct INTERFACE_DESCRIPTOR {
        std::uint32_t words[3];
    };

    // The types of the table's last column.
    using Int = int;
    using Byte = unsigned char;
    using String = std::string;
    using Calendar = GREG_CAL;
    using ManufactureDate = MFG_DATE;
    using Bytes = std::vector<unsigned char>;
    using MacAddresses = std::vector<std::vector<unsigned char>>;
    using Interfaces = std::vector<INTERFACE_DESCRIPTOR>;

#define TAVQZ_VPD_ID(family, name, id, type) family##_##name = (id),
    enum Field : int { TAVQZ_VPD_FIELDS(TAVQZ_VPD_ID) };
#undef TAVQZ_VPD_ID

    VPD();
    VPD(const VPD&) = delete;
    VPD& operator=(const VPD&) = delete;
    virtual ~VPD();

    bool isVPDValid() const;
    void setIsVPDValid(bool valid);

#define TAVQZ_VPD_SETTER(family, name, id, type) int set_##family##_##name(type value);
    TAVQZ_VPD_FIELDS(TAVQZ_VPD_SETTER)
#undef TAVQZ_VPD_SETTER

    // There is no such field: changes nothing.
    int set_VB_IMAGE_VERSION();

    // The field of that id, if it has the accessor's type. Else a line is logged, and the answer
    // is empty, -1, 255, a date of -1s; get_mfd leaves *date alone.
    std::string get_string(int id) const;
    int get_int(int id) const;
    unsigned char get_byte(int id) const;
    void get_cal(int id, GREG_CAL* date) const;
    void get_mfd(int id, MFG_DATE* date) const;
    std::vector<unsigned char> get_byte_vector(int id) const;
    std::vector<std::vector<unsigned char>> get_mac_address_vector(int id) const;
    std::vector<INTERFACE_DESCRIPTOR> get_desc_vector(int id) const;

private:
#define TAVQZ_VPD_VALUE(family, name, id, type) type family##_##name{};
    struct Values {
        TAVQZ_VPD_FIELDS(TAVQZ_VPD_VALUE)
    };
#undef TAVQZ_VPD_VALUE

    // The field of that id and type. Where there is none, logs so under the accessor's name and
    // returns null.
    template <class Value>
    TAVQZ_INTERNAL const Value* _find(int id, const char* accessor) const;

    Values _values;
    bool _valid = false;
};

extern "C" {

// Passes a text to addLogItem, under the name of the function that it is from.
TAVQZ_EXPORT void VpdLogItem(char* function, char* text);

// Passes the buffer to dumpdata.
TAVQZ_EXPORT void dump_vpd_buffer(unsigned char* buffer, int length);
}
