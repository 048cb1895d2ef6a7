// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServerGauge.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

ServerGauge ServerGauge::of(pid_t process) {
    const std::string folder = "/proc/" + std::to_string(process);
    ServerGauge gauge;
    std::ifstream status(folder + "/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            status >> gauge.kilobytes;
        } else if (word == "Threads:") {
            status >> gauge.threads;
        }
    }
    std::error_code error;
    for (std::filesystem::directory_iterator at(folder + "/fd", error), end; !error && at != end;
         at.increment(error)) {
        ++gauge.descriptors;
    }
    return gauge;
}

std::string ServerGauge::text() const {
    return std::to_string(kilobytes) + " kB, " + std::to_string(threads) + " threads, " +
           std::to_string(descriptors) + " descriptors";
}

ServerGauge ServerGauge::most(const ServerGauge& other) const {
    return {std::max(kilobytes, other.kilobytes), std::max(threads, other.threads),
            std::max(descriptors, other.descriptors)};
}
