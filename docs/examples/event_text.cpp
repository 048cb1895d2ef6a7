// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// event_text: prints the keys that some events of a System Event Log have.
//
//     c++ -std=c++17 event_text.cpp -lAssetIDProvider -o event_text

#include <tavqz/SystemEventRecord.h>

#include <iostream>

namespace {

// An event as most of the log's records have it; numbers are those of IPMI 2.0.
ipmiEvent event(std::uint32_t readingType, std::uint32_t sensorType, std::uint32_t offset) {
    ipmiEvent event{};
    event.eventReadingType = readingType;
    event.sensorType = sensorType;
    event.eventOffset = offset;
    return event;
}

void print(ipmiEvent event) {
    const SystemEventRecord record(&event);
    // A key for a catalogue of display texts; empty, or a blank, where there is none.
    std::cout << "sensor [" << record.getSensorTypeCodeString() << "] type ["
              << record.getEventReadingCodeString() << "] event [" << record.getEventString()
              << "] reading [" << record.getData0String() << "]\n";
}

}  // namespace

int main() {
    // A power supply (8) that lost its input: its own (111) event 3.
    print(event(111, 8, 3));

    // A temperature (1) that rose above a threshold (1): upper critical, going high (9).
    ipmiEvent hot = event(1, 1, 9);
    hot.readingPresent = 1;
    hot.thresholdPresent = 1;
    hot.reading = 92.5;
    print(hot);

    // What no catalogue has: an event of the maker's own (112).
    print(event(112, 192, 0));
}
