// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/String.h>

namespace QZ {

// The CIM classes of the module, made when it is loaded. Compare with `String::equalNoCase`.
namespace ClassName {

extern const Pegasus::String VigilPresent;
extern const Pegasus::String VigilVitalProductData;
extern const Pegasus::String VigilComponentVPD;
extern const Pegasus::String VigilMachineLevelVPD;
extern const Pegasus::String VigilPostBiosVPD;
extern const Pegasus::String VigilManagementProcessorVPD;
extern const Pegasus::String VigilWatchdog;
extern const Pegasus::String VigilSystemState;
extern const Pegasus::String Lease;
extern const Pegasus::String Warranty;
extern const Pegasus::String ComputerSystemDetails;
extern const Pegasus::String SerialNumberInformation;

}  // namespace ClassName
}  // namespace QZ
