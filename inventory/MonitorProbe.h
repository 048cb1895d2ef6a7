// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// At most 255 characters of each; what the configuration does not give stays as it was.
struct MonitorInfo {
    std::string monitorVendor;
    std::string monitorModel;
    std::string videoCardVendor;
    std::string videoCardModel;
};

// Non-zero where the X server's configuration could be read.
int getMonitorInfo(MonitorInfo& info);

// The texts of a configuration's "Device" and "Monitor" sections, quotes included; the last one
// counts. What a configuration tool writes for want of a name ("Generic", "Probed", "Unknown") is
// none.
void decodeXServerConfiguration(const std::string& text, MonitorInfo& info);

}  // namespace QZ
