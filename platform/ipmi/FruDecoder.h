// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "IpmiText.h"

namespace QZ {

// One field of an area: its text, and where its bytes stand in the unit's data.
struct FruField {
    std::string text;
    IpmiEncoding encoding = IpmiEncoding::Latin1;
    std::size_t offset = 0;
    std::size_t length = 0;
};

// What all areas have. Damaged: something is wrong in it, and the fields are what could be read.
struct FruArea {
    std::size_t offset = 0;  // where it stands in the unit's data, as far as these go
    std::size_t length = 0;
    bool isDamaged = false;
    std::vector<FruField> custom;  // the makers' own, without the empty ones
};

struct FruChassis : FruArea {
    unsigned char type = 0;  // as in SMBIOS type 3
    FruField partNumber;
    FruField serialNumber;
};

struct FruBoard : FruArea {
    unsigned char language = 0;
    std::uint32_t madeMinutes = 0;  // since 1996 began; 0 is not told
    FruField manufacturer;
    FruField name;
    FruField serialNumber;
    FruField partNumber;
    FruField fileId;
};

struct FruProduct : FruArea {
    unsigned char language = 0;
    FruField manufacturer;
    FruField name;
    FruField partNumber;  // or model number
    FruField version;
    FruField serialNumber;
    FruField assetTag;
    FruField fileId;
};

// The inventory data of one field-replaceable unit (Platform Management FRU Information Storage
// Definition 1.0, revision 1.3). The multi-record area is left alone.
struct FruInventory {
    // Empty: never written. Damaged: something is wrong, and what could be read is there. Failed:
    // this is no such data, and no area is there.
    enum class State { Ok, Empty, Damaged, Failed };

    State state = State::Empty;
    std::string reason;  // why the state is Damaged or Failed, as sentences for the administrator
    std::optional<FruChassis> chassis;
    std::optional<FruBoard> board;
    std::optional<FruProduct> product;
};

// Pure, total over any bytes, callable from any thread. A wrong checksum or version costs no field:
// many parts have one. A header is given up only where both are wrong. A field that its area cuts
// off is kept as far as it goes; an area that the data cut off likewise.
FruInventory decodeFru(const std::string& bytes);

}  // namespace QZ
