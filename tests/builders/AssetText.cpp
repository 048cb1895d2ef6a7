// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AssetText.h"

namespace {

struct Entry {
    const char* key;
    const char* value;
    const char* unset = "";
};

const Entry _entries[] = {
    {"USER.AssetNumber", "A-004217"},
    {"USER.AssetIdTag", "TAG 4217"},
    {"USER.Name",
     "Ren\xC3\xA9"
     "e M\xC3\xBCller"},
    {"USER.Phone", "+1 555 0142"},
    {"USER.Position", "Storage administrator"},
    {"USER.Department", "Data centre operations"},
    {"USER.LastInventoried", "2026-03-02"},
    {"USER.PurchaseDate", "2025-01-15"},
    {"USER.Location", "Hall 2, row C, rack 14, unit 20"},
    {"USER.KELPProfile", "standard-2u"},
    {"USER.KELPUpdateTime", "2026-03-02T09:30:00+01:00"},
    {"USER.PersonalizedLabel1", "Cost centre"},
    {"USER.PersonalizedData1", "70-1144"},
    {"USER.PersonalizedLabel2", "On call"},
    {"USER.PersonalizedData2", "storage@example.com"},
    {"USER.PersonalizedLabel3", ""},
    {"USER.PersonalizedData3", ""},
    {"USER.PersonalizedLabel4", ""},
    {"USER.PersonalizedData4", ""},
    {"USER.PersonalizedLabel5", ""},
    {"USER.PersonalizedData5", ""},
    {"LEASE.LRF", "3", "0"},
    {"LEASE.Term", "36", "0"},
    {"LEASE.Buyout", "1200", "0"},
    {"LEASE.FMV", "2500", "0"},
    {"LEASE.Lessor", "Example Leasing"},
    {"LEASE.Payment", "245.00 EUR a month"},
    {"LEASE.StartDate", "2025-02-01"},
    {"LEASE.EndDate", "2028-01-31"},
    {"WARRANTY.Duration", "3", "0"},
    {"WARRANTY.DurationUnit", "3", "0"},
    {"WARRANTY.EndDate", "2028-01-14"},
    {"WARRANTY.Cost", "0.00"},
};

}  // namespace

std::string filledAsset() {
    std::string text;
    for (const Entry& entry : _entries) {
        text += std::string(entry.key) + '=' + entry.value + '\n';
    }
    return text;
}

std::string emptyAsset() {
    std::string text;
    for (const Entry& entry : _entries) {
        text += std::string(entry.key) + '=' + entry.unset + '\n';
    }
    return text;
}
