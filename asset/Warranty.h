// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "AssetRecord.h"

namespace QZ {

// The warranty of this machine, as "asset.dat" holds it (see `AssetRecord` for its life).
//
// The code of the duration's unit is stored as given; nothing here interprets it. The cost is
// free text.
class Warranty : public AssetRecord {
public:
    // Throws `Error` where the file's lock cannot be had; a missing file reads as empty.
    Warranty();
    // Saves every field. Throws `Error` where that fails.
    ~Warranty() noexcept(false);  // NOLINT(bugprone-exception-escape)

    unsigned char getDuration() const { return _duration; }
    void setDuration(unsigned char duration) { _duration = duration; }
    unsigned char getDurationUnit() const { return _durationUnit; }
    void setDurationUnit(unsigned char unit) { _durationUnit = unit; }
    DateTime getEndDate() const { return _endDate; }
    void setEndDate(DateTime endDate) { _endDate = endDate; }
    std::string getCost() const { return _cost; }
    void setCost(std::string cost) { _cost = std::move(cost); }

private:
    static const RecordField<Warranty> _fields[4];

    unsigned char _duration = 0;
    unsigned char _durationUnit = 0;
    DateTime _endDate;
    std::string _cost;
};

}  // namespace QZ
