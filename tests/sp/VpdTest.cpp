// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/VPD.h"

#include <gmock/gmock.h>

#include <set>
#include <type_traits>

#include "LibraryWorld.h"
#include "tavqz/ServiceProcessorRecords.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Vpd : public ::testing::Test {
protected:
    Vpd() { LibraryWorld::current() = LibraryWorld(); }

    // Nobody found the last id asked for.
    static bool missed(const std::string& accessor) {
        const std::vector<std::string> log = std::move(LibraryWorld::current().log);
        LibraryWorld::current().log.clear();
        return log == std::vector<std::string>{accessor + "|Could not find the given key"};
    }
    static bool silent() { return LibraryWorld::current().log.empty(); }

    VPD record;
};

// A value of each type that no new record holds, by number.

int _sample(int number, const int*) {
    return number;
}

unsigned char _sample(int number, const unsigned char*) {
    return static_cast<unsigned char>(number % 250 + 1);
}

std::string _sample(int number, const std::string*) {
    return "text " + std::to_string(number);
}

VPD::Calendar _sample(int number, const VPD::Calendar*) {
    return {number, number + 1, number + 2};
}

VPD::ManufactureDate _sample(int number, const VPD::ManufactureDate*) {
    return {number, number + 1};
}

VPD::Bytes _sample(int number, const VPD::Bytes*) {
    return {_sample(number, static_cast<unsigned char*>(nullptr)), 0, 255};
}

VPD::MacAddresses _sample(int number, const VPD::MacAddresses*) {
    return {{}, _sample(number, static_cast<VPD::Bytes*>(nullptr))};
}

VPD::Interfaces _sample(int number, const VPD::Interfaces*) {
    return {{{static_cast<std::uint32_t>(number), 0, 0xFFFFFFFF}}};
}

bool _equal(const VPD::Calendar& x, const VPD::Calendar& y) {
    return x.day == y.day && x.month == y.month && x.year == y.year;
}

bool _equal(const VPD::ManufactureDate& x, const VPD::ManufactureDate& y) {
    return x.first == y.first && x.second == y.second;
}

bool _equal(const VPD::Interfaces& x, const VPD::Interfaces& y) {
    return std::equal(x.begin(), x.end(), y.begin(), y.end(), [](const auto& a, const auto& b) {
        return std::equal(std::begin(a.words), std::end(a.words), std::begin(b.words));
    });
}

template <class Value>
bool _equal(const Value& x, const Value& y) {
    return x == y;
}

template <class Value>
Value _get(const VPD& record, int id) {
    if constexpr (std::is_same_v<Value, VPD::Int>) {
        return record.get_int(id);
    } else if constexpr (std::is_same_v<Value, VPD::Byte>) {
        return record.get_byte(id);
    } else if constexpr (std::is_same_v<Value, VPD::String>) {
        return record.get_string(id);
    } else if constexpr (std::is_same_v<Value, VPD::Bytes>) {
        return record.get_byte_vector(id);
    } else if constexpr (std::is_same_v<Value, VPD::MacAddresses>) {
        return record.get_mac_address_vector(id);
    } else if constexpr (std::is_same_v<Value, VPD::Interfaces>) {
        return record.get_desc_vector(id);
    } else if constexpr (std::is_same_v<Value, VPD::Calendar>) {
        VPD::Calendar date{7, 7, 7};
        record.get_cal(id, &date);
        return date;
    } else {
        VPD::ManufactureDate date{7, 7};
        record.get_mfd(id, &date);
        return date;
    }
}

TEST_F(Vpd, StartsEmptyAndInvalid) {
    EXPECT_FALSE(record.isVPDValid());
    EXPECT_EQ(record.get_int(1001), 0);
    EXPECT_EQ(record.get_string(1005), "");
// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are names and types
#define EXPECT_EMPTY(family, name, id, type) \
    EXPECT_TRUE(_equal(_get<VPD::type>(record, id), VPD::type{})) << id;
    TAVQZ_VPD_FIELDS(EXPECT_EMPTY)
    EXPECT_TRUE(silent());
}

TEST_F(Vpd, GivesBackWhatEachSetterStored) {
#define SET(family, name, id, type) \
    EXPECT_EQ(record.set_##family##_##name(_sample(id, static_cast<VPD::type*>(nullptr))), 0);
    TAVQZ_VPD_FIELDS(SET)
    // After all were set: none may have written into another's place.
#define EXPECT_SAMPLE(family, name, id, type)                                               \
    EXPECT_TRUE(                                                                            \
        _equal(_get<VPD::type>(record, id), _sample(id, static_cast<VPD::type*>(nullptr)))) \
        << id;                                                                              \
    EXPECT_EQ(VPD::family##_##name, id);
    TAVQZ_VPD_FIELDS(EXPECT_SAMPLE)
    EXPECT_TRUE(silent());
}

TEST_F(Vpd, HasItsFieldsInFiveFamilies) {
    std::vector<int> ids;
#define ADD_ID(family, name, id, type) ids.push_back(id);
    TAVQZ_VPD_FIELDS(ADD_ID)
    std::vector<int> expected;
    const std::pair<int, int> families[] = {
        {1000, 29}, {2000, 5}, {3000, 8}, {4000, 7}, {5000, 10}};
    for (const auto& [base, count] : families) {
        for (int i = 1; i <= count; ++i) {
            expected.push_back(base + i);
        }
    }
    EXPECT_EQ(ids, expected);
}

TEST_F(Vpd, KnowsAFieldOnlyUnderItsOwnType) {
    std::map<int, std::string> types;
#define ADD_TYPE(family, name, id, type) types[id] = #type;
    TAVQZ_VPD_FIELDS(ADD_TYPE)
    for (int id = 999; id < 5020; ++id) {
        const std::string type = types[id];
        record.get_string(id);
        EXPECT_EQ(missed("VPD::get_string"), type != "String") << id;
        record.get_int(id);
        EXPECT_EQ(missed("VPD::get_int"), type != "Int") << id;
        record.get_byte(id);
        EXPECT_EQ(missed("VPD::get_byte"), type != "Byte") << id;
        record.get_byte_vector(id);
        EXPECT_EQ(missed("VPD::get_byte_vector"), type != "Bytes") << id;
    }
}

TEST_F(Vpd, AnswersAnUnknownIdNeutrallyAndSaysSo) {
    EXPECT_EQ(record.get_int(1004), -1);
    EXPECT_TRUE(missed("VPD::get_int"));
    EXPECT_EQ(record.get_byte(1001), 255);
    EXPECT_TRUE(missed("VPD::get_byte"));
    EXPECT_EQ(record.get_string(-1), "");
    EXPECT_TRUE(missed("VPD::get_string"));
    VPD::GREG_CAL date{1, 2, 3};
    record.get_cal(2005, &date);
    EXPECT_TRUE(_equal(date, VPD::GREG_CAL{-1, -1, -1}));
    EXPECT_TRUE(missed("VPD::get_cal"));
    VPD::MFG_DATE made{5, 6};
    record.get_mfd(1019, &made);
    EXPECT_TRUE(_equal(made, VPD::MFG_DATE{5, 6}));
    EXPECT_TRUE(missed("VPD::get_mfd"));
    EXPECT_THAT(record.get_byte_vector(1021), IsEmpty());
    EXPECT_TRUE(missed("VPD::get_byte_vector"));
    EXPECT_THAT(record.get_mac_address_vector(1022), IsEmpty());
    EXPECT_TRUE(missed("VPD::get_mac_address_vector"));
    EXPECT_THAT(record.get_desc_vector(1022), IsEmpty());
    EXPECT_TRUE(missed("VPD::get_desc_vector"));
}

TEST_F(Vpd, StoresNoImageVersion) {
    EXPECT_EQ(record.set_VB_IMAGE_VERSION(), 0);
    EXPECT_FALSE(record.isVPDValid());
#define EXPECT_STILL_EMPTY(family, name, id, type) \
    EXPECT_TRUE(_equal(_get<VPD::type>(record, id), VPD::type{})) << id;
    TAVQZ_VPD_FIELDS(EXPECT_STILL_EMPTY)
}

// NOLINTEND(bugprone-macro-parentheses)

TEST_F(Vpd, KeepsInternalAndExternalInterfacesApart) {
    record.set_FB_INTERNAL_INTERFACES({{{1, 2, 3}}});
    EXPECT_THAT(record.get_desc_vector(1024), IsEmpty());
    ASSERT_EQ(record.get_desc_vector(1023).size(), 1U);
    EXPECT_THAT(record.get_desc_vector(1023)[0].words, ElementsAre(1, 2, 3));
}

TEST_F(Vpd, IsValidWhenDeclaredSo) {
    record.setIsVPDValid(true);
    EXPECT_TRUE(record.isVPDValid());
    record.setIsVPDValid(false);
    EXPECT_FALSE(record.isVPDValid());
}

TEST_F(Vpd, LogsUnderTheNameOfTheFunction) {
    Name function("someFunction");
    Name text("some text");
    VpdLogItem(function, text);
    EXPECT_THAT(LibraryWorld::current().log, ElementsAre("someFunction|some text"));
    unsigned char bytes[] = {1, 2, 3};
    dump_vpd_buffer(bytes, 3);
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3));
    EXPECT_EQ(LibraryWorld::current().log.size(), 1U);
}

}  // namespace
