// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "EventKeys.h"

#include <cstddef>

namespace QZ {

namespace {

// By code. Session audit (42) has no key, on purpose.
constexpr std::string_view SENSOR_TYPES[] = {
    "",        "TEMP",    "VOLT",      "CURRENT", "FAN",      "PHYSEC",   "PLATSEC",  "PROC",
    "PWRSUP",  "PWRUNIT", "COOLDEV",   "OTHER",   "MEM",      "DRVSLOT",  "POSTMEM",  "SFWPROG",
    "ELOG",    "WDOG1",   "SYSEVNT",   "CRITINT", "BUTTON",   "MOD_BRD",  "MICROCTL", "ADDINCRD",
    "CHASS",   "CHIPSET", "OTHER_FRU", "CABLE",   "TERM",     "BOOT_INI", "BOOT_ERR", "OS_BOOT",
    "OS_STOP", "SLOT",    "ACPIPS",    "WDOG2",   "PLATALRT", "ENT_PRES", "MON_ASIC", "LAN",
    "MSSHLTH", "BATTERY", "",          "VERSION",
};

struct GenericType {
    std::string_view name;
    std::string_view offsets;
};

// By code.
constexpr GenericType GENERIC_TYPES[] = {
    {"UNKNOWN", ""},
    {"THOLD", "LNCL LNCH LCL LCH LNRL LNRH UNCL UNCH UCL UCH UNRL UNRH"},
    {"TRANS", "IDLE ACTIVE BUSY"},
    {"STATE", "ASRT DASRT"},
    {"PFAIL", "ASRT DASRT"},
    {"LIMIT", "OK EXCEED"},
    {"PERF", "OK LAGS"},
    {"SEVERE", "OK LS_NC LS_C LS_NR MS_NC MS_C NR MON INFO"},
    {"DEVPRES", "INS EXT"},
    {"DEVST", "ENA DIS"},
    {"AVAIL", "RUN TEST OFF ONL OFL OFD DEG PWR ERR"},
    {"REDUN", "OK LST DEG RLNRM RRNRM NON RLDEG RRDEG"},
    {"ACPI", "D0 D1 D2 D3"},
};

struct SensorEvents {
    std::uint32_t code;
    EventNames names;
};

// The sensor types that have events of their own. "All" in mixed case and the doubled "STC" are
// what catalogues have.
constexpr SensorEvents SENSOR_EVENTS[] = {
    {5, {"PHYSEC", "CHASS DRIVE CARD PROC LAN DOCK FAN"}},
    {6, {"PLATSEC", "FPANEL USERP SETUPP NETP OTHERP OOBP"}},
    {7, {"PROC", "IERR THTRP FRB1 FRB2 FRB3 CFGERR SMBIOS PROCPRES PROCDIS TRMPRES AUTOTHROT"}},
    {8, {"PWRSUP", "PRES FAIL PFAIL ACLOST ACLOOR ACPOOR CFGERR"}},
    {9, {"PWRUNIT", "OFF CYCLE 240DWN ACLOST SOFT FAIL PFAIL ILOCKDWN"}},
    {12, {"MEM", "CERR UNCERR PAR SFAIL DIS LOGLIM PRES CFGERR SPARE"}},
    {15, {"SFWPROG", "PERR HANG STRT"}},
    {16, {"ELOG", "MEM ERC RST All"}},
    {17, {"WDOG1", "BRST RST SHUTDWN PDOWN PCYCLE INT EXP PTO"}},
    {18, {"SYSEVNT", "STC_RECON STC_BOOT STC_HWFAIL STC_AUXLOG STC_PEF STC_SYNC"}},
    {19, {"CRITINT", "FPANEL BUSTO IOCC SW PERR SERR EISA BCERR BUERR FATAL"}},
    {20, {"BUTTON", "PWR SLEEP RST"}},
    {29, {"BOOT", "INI_PWR INI_RST INI_WARM INI_USR INI_DIAG"}},
    {30, {"BOOT", "ERR_MEDIA ERR_FD ERR_PXE ERR_SECT ERR_TO"}},
    {31, {"OS", "BOOT_A BOOT_C BOOT_PXE BOOT_DIAG BOOT_CD BOOT_ROM BOOT_UNK"}},
    {32, {"OS", "STOP_LOAD STOP_RUN"}},
    {33, {"SLOT", "FAULT ID INS INSRDY REMRDY PWROFF REM LOCK DIS SPARE"}},
    {34, {"ACPIPS", "S0 S1 S2 S3 S4 S5 SOFF G3 SLEEP G1 OVR ON OFF UNK"}},
    {35, {"WDOG2", "EXP RST PDOWN PCYCLE INT"}},
    {36, {"PLATALRT", "PAGE LAN PET OEM"}},
    {37, {"ENT", "ABSENT DISABLED"}},
    {39, {"LAN", "DOWN UP"}},
    {40, {"MSSHLTH", "SAD CAD OFF UNA"}},
    {41, {"BATTERY", "LOW FAIL PRES"}},
    {43, {"VER", "HW FW HW_INC FW_INC HW_UNS FW_UNS HW_OK FW_OK"}},
};

}  // namespace

std::string_view sensorTypeName(std::uint32_t code) {
    return code < std::size(SENSOR_TYPES) ? SENSOR_TYPES[code] : std::string_view();
}

std::string_view readingTypeName(std::uint32_t code) {
    switch (code) {
        case READING_TYPE_SENSOR_SPECIFIC:
            return "SID";
        case READING_TYPE_OEM:
            return "OEM_BASE";
        default:
            return code < std::size(GENERIC_TYPES) ? GENERIC_TYPES[code].name : std::string_view();
    }
}

std::string_view EventNames::name(std::uint32_t offset) const {
    std::string_view rest = offsets;
    for (; offset != 0 && !rest.empty(); --offset) {
        const std::size_t blank = rest.find(' ');
        rest.remove_prefix(blank == rest.npos ? rest.size() : blank + 1);
    }
    return rest.substr(0, rest.find(' '));
}

EventNames genericEventNames(std::uint32_t readingType) {
    if (readingType == READING_TYPE_UNSPECIFIED || readingType >= std::size(GENERIC_TYPES)) {
        return {};
    }
    const GenericType& type = GENERIC_TYPES[readingType];
    return {type.name, type.offsets};
}

EventNames sensorEventNames(std::uint32_t sensorType) {
    for (const SensorEvents& events : SENSOR_EVENTS) {
        if (events.code == sensorType) {
            return events.names;
        }
    }
    return {};
}

}  // namespace QZ
