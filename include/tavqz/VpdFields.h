// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

// The fields of a VPD record as a table, from which its setters, ids and values are made. Each row
// is FIELD(family, name, id, type), where type is one of VPD's: the field's full name is
// family_name, its setter set_family_name.
//
// FB is a card's own data, VB a firmware version block, EEPROM a component's, FIRMWARE a firmware
// image, IPMI the data of an IPMI-managed component.

// clang-format off
#define TAVQZ_VPD_FIELDS(FIELD) \
    FIELD(FB, VPDID, 1001, Int)                             \
    FIELD(FB, POSID, 1002, Int)                             \
    FIELD(FB, POSID_EXT, 1003, Int)                         \
    FIELD(FB, COMPONENT_FUNCTION, 1004, Byte)               \
    FIELD(FB, MACHINE_TYPEMODEL, 1005, String)              \
    FIELD(FB, MACHINE_SERIAL_NUMBER, 1006, String)          \
    FIELD(FB, ASSET_ID, 1007, String)                       \
    FIELD(FB, PART_NUMBER, 1008, String)                    \
    FIELD(FB, FRU_NUMBER, 1009, String)                     \
    FIELD(FB, SERIAL_NUMBER, 1010, String)                  \
    FIELD(FB, PREFIX_SERIAL_NUMBER, 1011, String)           \
    FIELD(FB, MANUFACTURER_ID, 1012, String)                \
    FIELD(FB, HW_REVISION_LEVEL, 1013, Int)                 \
    FIELD(FB, MODULE_WIDTH, 1014, Byte)                     \
    FIELD(FB, MODULE_HEIGHT, 1015, Int)                     \
    FIELD(FB, MODULE_UUID, 1016, Bytes)                     \
    FIELD(FB, POWER_CONSUMPTION, 1017, Int)                 \
    FIELD(FB, POWER_CAPACITY, 1018, Int)                    \
    FIELD(FB, MODULE_FEATURE_SUPPORT, 1019, Bytes)          \
    FIELD(FB, MANUFACTURE_DATE, 1020, ManufactureDate)      \
    FIELD(FB, MAC_ADDRESSES, 1021, MacAddresses)            \
    FIELD(FB, UUID, 1022, Bytes)                            \
    FIELD(FB, INTERNAL_INTERFACES, 1023, Interfaces)        \
    FIELD(FB, EXTERNAL_INTERFACES, 1024, Interfaces)        \
    FIELD(FB, CHASSIS_CAPACITY_SWITCH_SLOTS, 1025, Int)     \
    FIELD(FB, CHASSIS_CAPACITY_PROCESSOR_SLOTS, 1026, Int)  \
    FIELD(FB, CHASSIS_CAPACITY_POWER_MODULES, 1027, Int)    \
    FIELD(FB, CHASSIS_CAPACITY_MGMT_MODULES, 1028, Int)     \
    FIELD(FB, CHASSIS_CAPACITY_FAN_ASSEMBLY, 1029, Int)     \
    FIELD(VB, FW_TYPE, 2001, Int)                           \
    FIELD(VB, IMAGE_BUILD_ID, 2002, String)                 \
    FIELD(VB, IMAGE_FILENAME, 2003, String)                 \
    FIELD(VB, IMAGE_TIMESTAMP, 2004, Calendar)              \
    FIELD(VB, IMAGE_REVISION, 2005, String)                 \
    FIELD(EEPROM, VPDID, 3001, Int)                         \
    FIELD(EEPROM, POSID, 3002, Int)                         \
    FIELD(EEPROM, PART_NUMBER, 3003, String)                \
    FIELD(EEPROM, FRU_NUMBER, 3004, String)                 \
    FIELD(EEPROM, SERIAL_NUMBER, 3005, String)              \
    FIELD(EEPROM, MANUFACTURER_ID, 3006, String)            \
    FIELD(EEPROM, SLOT_NUMBER, 3007, Int)                   \
    FIELD(EEPROM, RAW_DEVICE_SPECIFIC, 3008, Bytes)         \
    FIELD(FIRMWARE, IMAGE_BUILD_ID, 4001, String)           \
    FIELD(FIRMWARE, IMAGE_FILENAME, 4002, String)           \
    FIELD(FIRMWARE, IMAGE_VALID, 4003, Byte)                \
    FIELD(FIRMWARE, IMAGE_TIMESTAMP, 4004, Calendar)        \
    FIELD(FIRMWARE, IMAGE_REVISION, 4005, Byte)             \
    FIELD(FIRMWARE, IMAGE_VERSION, 4006, String)            \
    FIELD(FIRMWARE, RAW_DEVICE_SPECIFIC, 4007, Bytes)       \
    FIELD(IPMI, PART_NUMBER, 5001, String)                  \
    FIELD(IPMI, FRU_NUMBER, 5002, String)                   \
    FIELD(IPMI, SERIAL_NUMBER, 5003, String)                \
    FIELD(IPMI, MANUFACTURER_ID, 5004, String)              \
    FIELD(IPMI, MFG_NAME, 5005, String)                     \
    FIELD(IPMI, PRODUCT_NAME, 5006, String)                 \
    FIELD(IPMI, FRU_FILE_ID, 5007, String)                  \
    FIELD(IPMI, PART_MODEL_NUMBER, 5008, String)            \
    FIELD(IPMI, PRODUCT_VERSION, 5009, String)              \
    FIELD(IPMI, ASSET_TAG, 5010, String)
// clang-format on
