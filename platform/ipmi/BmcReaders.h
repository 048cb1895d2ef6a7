// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "BmcValues.h"
#include "FruDecoder.h"
#include "IpmiSession.h"
#include "SdrDecoder.h"

namespace QZ {

// How many bytes are read at a time, from the most that the shortest buffers hold down. Learned
// from the controller's refusals and kept for the next reading.
class BmcReadSize {
public:
    unsigned bytes() const { return _bytes; }

    // False where the refusal has another reason, or the smallest size was refused too.
    bool shrinkFor(const IpmiReply& refusal);

private:
    unsigned _bytes = 32;
};

// The records of a sensor data repository as far as they have been read, and when it was changed
// last. Kept between readings: one that the deadline cuts off goes on where it stopped, and a
// repository that did not change since is not read again.
struct BmcRecords {
    std::vector<std::string> records;
    std::uint16_t next = 0;
    bool isComplete = false;
    std::string stamp;  // what the controller says of the repository's state
};

// Brings the records up to date (IPMI 2.0, 33.9 to 33.12). A reservation that is lost is made anew
// a few times.
void readSdr(IpmiSession& session, BmcReadSize& size, BmcRecords& records);

// The inventory data of a unit: those of its areas' bytes that somebody decodes, the others 0. An
// area that the controller refuses lies beyond the end, or ends where it could still be read.
// Nothing where the controller has no such unit (34.1, 34.2).
struct FruBytes {
    bool isPresent = false;
    bool isComplete = false;
    std::string bytes;
};
FruBytes readFru(IpmiSession& session, BmcReadSize& size, const FruLocator& unit);

// The entries of the event log from that record on (31.5), 0 being the first.
struct BmcSelEntries {
    std::vector<BmcSelEntry> entries;
    std::uint16_t next = 0xFFFF;  // where to go on; FFFFh when these were the last
};
BmcSelEntries readSel(IpmiSession& session, std::uint16_t from);

}  // namespace QZ
