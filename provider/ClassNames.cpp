// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassNames.h"

namespace QZ::ClassName {

const Pegasus::String VigilPresent("TAVIRA_VigilPresent");
const Pegasus::String VigilVitalProductData("TAVIRA_VigilVitalProductData");
const Pegasus::String VigilComponentVPD("TAVIRA_VigilComponentVPD");
const Pegasus::String VigilMachineLevelVPD("TAVIRA_VigilMachineLevelVPD");
const Pegasus::String VigilPostBiosVPD("TAVIRA_VigilPostBiosVPD");
const Pegasus::String VigilManagementProcessorVPD("TAVIRA_VigilManagementProcessorVPD");
const Pegasus::String VigilWatchdog("TAVIRA_VigilWatchdog");
const Pegasus::String VigilSystemState("TAVIRA_VigilSystemState");
const Pegasus::String Lease("TAVIRA_Lease");
const Pegasus::String Warranty("TAVIRA_Warranty");
const Pegasus::String ComputerSystemDetails("TAVIRA_ComputerSystemDetails");
const Pegasus::String SerialNumberInformation("TAVIRA_SerialNumberInformation");

}  // namespace QZ::ClassName
