// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// A command for a management controller, and what it replies (IPMI 2.0, chapter 5). Values.

// The machine's own controller, which hears of a command through the system interface. Any other
// address is that of a controller behind it, on the channel's bus.
inline constexpr unsigned char BmcAddress = 0x20;

enum class IpmiFunction : unsigned char { Chassis = 0x00, Application = 0x06, Storage = 0x0A };

struct IpmiRequest {
    IpmiFunction function = IpmiFunction::Application;
    unsigned char command = 0;
    std::string data;
    unsigned char address = BmcAddress;
    unsigned char channel = 0;
    unsigned char lun = 0;
};

// Completion codes (table 5-2) that somebody acts upon.
enum IpmiCompletion : unsigned char {
    IpmiNormal = 0x00,
    IpmiFruBusy = 0x81,  // of Read FRU Data alone
    IpmiNodeBusy = 0xC0,
    IpmiInvalidCommand = 0xC1,
    IpmiControllerTimeout = 0xC3,
    IpmiReservationCancelled = 0xC5,
    IpmiLengthInvalid = 0xC7,
    IpmiLengthExceeded = 0xC8,
    IpmiCannotReturnLength = 0xCA,
    IpmiNotPresent = 0xCB,
    IpmiDuplicate = 0xCF,
    IpmiInInitialisation = 0xD2,
    IpmiUnspecified = 0xFF,
};

struct IpmiReply {
    unsigned char completion = IpmiNormal;
    std::string data;  // behind the completion code
};

}  // namespace QZ
