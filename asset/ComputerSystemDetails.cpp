// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ComputerSystemDetails.h"

#include <algorithm>
#include <cstring>

#include "Clock.h"
#include "Error.h"
#include "MachinePaths.h"
#include "System.h"

namespace QZ {
namespace {

constexpr struct {
    const char* label;
    const char* data;
} _personalizedKeys[] = {
    {"USER.PersonalizedLabel1", "USER.PersonalizedData1"},
    {"USER.PersonalizedLabel2", "USER.PersonalizedData2"},
    {"USER.PersonalizedLabel3", "USER.PersonalizedData3"},
    {"USER.PersonalizedLabel4", "USER.PersonalizedData4"},
    {"USER.PersonalizedLabel5", "USER.PersonalizedData5"},
};

}  // namespace

constexpr RecordField<ComputerSystemDetails> ComputerSystemDetails::_fields[] = {
    {"USER.AssetNumber", &ComputerSystemDetails::_assetNumber},
    {"USER.AssetIdTag", &ComputerSystemDetails::_assetIdTag},
    {"USER.Name", &ComputerSystemDetails::_ownerName},
    {"USER.Phone", &ComputerSystemDetails::_ownerPhone},
    {"USER.Position", &ComputerSystemDetails::_ownerPosition},
    {"USER.Department", &ComputerSystemDetails::_ownerDepartment},
    {"USER.LastInventoried", &ComputerSystemDetails::_lastInventoried},
    {"USER.PurchaseDate", &ComputerSystemDetails::_systemPurchaseDate},
    {"USER.Location", &ComputerSystemDetails::_systemLocation},
    {"USER.KELPProfile", &ComputerSystemDetails::_kelpProfile},
    {"USER.KELPUpdateTime", &ComputerSystemDetails::_kelpUpdateTime},
};

ComputerSystemDetails::ComputerSystemDetails() {
    load([this](const PropertyFile& file) {
        ReadFields(file, _fields, *this);
        for (const auto& keys : _personalizedKeys) {
            std::string label = ReadStringFromFile(file, keys.label);
            _personalizedData.emplace_back(std::move(label), ReadStringFromFile(file, keys.data));
        }
    });
}

// NOLINTNEXTLINE(bugprone-exception-escape)
ComputerSystemDetails::~ComputerSystemDetails() noexcept(false) {
    save([this](PropertyFile& file) {
        WriteFields(file, _fields, *this);
        const std::size_t count = std::min(_personalizedData.size(), std::size(_personalizedKeys));
        for (std::size_t i = 0; i < count; ++i) {
            WriteStringToFile(file, _personalizedKeys[i].label, _personalizedData[i].first);
            WriteStringToFile(file, _personalizedKeys[i].data, _personalizedData[i].second);
        }
    });
}

DateTime ComputerSystemDetails::getDateTime() const {
    return DateTime(Clock::current().seconds(), 3);
}

void ComputerSystemDetails::setDateTime(DateTime time) {
    constexpr int lastYear = 2037;
    if (!time.isSet() || time.getYear() > lastYear || MachinePaths::isOtherMachine()) {
        return;
    }
    const int error = Clock::current().setSeconds(time.toSeconds());
    if (error != 0) {
        throw Error(std::string("the machine's clock could not be set: ") + std::strerror(error));
    }
}

std::wstring ComputerSystemDetails::getSystemName() const {
    return System::getName();
}

}  // namespace QZ
