// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/InterfaceTable.h"

// Constants of the image, so that they are right before any initialiser has run.

interfaceStruct fpSharedCommonFuncs[5] = {
    {"getSharedCommDevice", nullptr},   {"getSharedLibDevice", nullptr},
    {"initSharedInterface", nullptr},   {"interface_Comm_Release", nullptr},
    {"interface_Lib_Release", nullptr},
};

interfaceStruct fpSharedCommFuncs[2] = {
    {"getSharedCommDevice", nullptr},
    {"interface_close", nullptr},
};

interfaceStruct fpSharedLibFuncs[2] = {
    {"openLibrary", nullptr},
    {"closeLibrary", nullptr},
};
