// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FieldText.h"

#include <charconv>
#include <limits>
#include <sstream>

namespace {

template <class Number>
bool _readWhole(const std::string& text, Number& value, int base = 10) {
    const char* const end = text.data() + text.size();
    Number read{};
    const auto result = std::from_chars(text.data(), end, read, base);
    if (result.ec != std::errc() || result.ptr != end) {
        return false;
    }
    value = read;
    return true;
}

// The words of a text, each read into the next of the places; as many as there are places.
template <class Number, std::size_t Count>
bool _readWords(const std::string& text, Number (&places)[Count]) {
    std::istringstream words(text);
    std::string word;
    for (Number& place : places) {
        if (!(words >> word) || !_readWhole(word, place)) {
            return false;
        }
    }
    return !(words >> word);
}

// One value for each part between commas.
template <class Value, class Read>
bool _readList(const std::string& text, std::vector<Value>& values, Read read) {
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');) {
        if (!read(part, values.emplace_back())) {
            return false;
        }
    }
    return true;
}

constexpr const char* _form(VPD::Int) {
    return "it is a decimal number";
}

constexpr const char* _form(VPD::Byte) {
    return "it is a number from 0 to 255";
}

constexpr const char* _form(VPD::Calendar) {
    return "it is a day, a month and a year";
}

constexpr const char* _form(VPD::ManufactureDate) {
    return "it is two numbers";
}

const char* _form(const VPD::String&) {
    return "it is a text";
}

const char* _form(const VPD::Bytes&) {
    return "it is bytes in hexadecimal digits";
}

const char* _form(const VPD::MacAddresses&) {
    return "it is bytes in hexadecimal digits, with commas between addresses";
}

const char* _form(const VPD::Interfaces&) {
    return "it is three numbers, with commas between interfaces";
}

}  // namespace

bool readNumber(const std::string& text, long long& value) {
    return _readWhole(text, value);
}

bool readField(const std::string& text, VPD::Int& value) {
    return _readWhole(text, value);
}

bool readField(const std::string& text, VPD::Byte& value) {
    return _readWhole(text, value);
}

bool readField(const std::string& text, VPD::String& value) {
    value = text;
    return true;
}

bool readField(const std::string& text, VPD::Calendar& value) {
    std::int32_t numbers[3]{};
    const bool isGood = _readWords(text, numbers);
    value = {numbers[0], numbers[1], numbers[2]};
    return isGood;
}

bool readField(const std::string& text, VPD::ManufactureDate& value) {
    std::int32_t numbers[2]{};
    const bool isGood = _readWords(text, numbers);
    value = {numbers[0], numbers[1]};
    return isGood;
}

bool readField(const std::string& text, VPD::Bytes& value) {
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!_readWhole(word, value.emplace_back(), 16)) {
            return false;
        }
    }
    return true;
}

bool readField(const std::string& text, VPD::MacAddresses& value) {
    return _readList(text, value, [](const std::string& part, VPD::Bytes& address) {
        return readField(part, address);
    });
}

bool readField(const std::string& text, VPD::Interfaces& value) {
    return _readList(text, value, [](const std::string& part, VPD::INTERFACE_DESCRIPTOR& one) {
        return _readWords(part, one.words);
    });
}

FieldCheck checkField(const std::string& field, const std::string& text) {
#define CHECK_FIELD(family, name, id, type)                                        \
    if (field == #family "_" #name) {                                              \
        VPD::type value{};                                                         \
        return readField(text, value) ? FieldCheck::Good : FieldCheck::WrongValue; \
    }
    TAVQZ_VPD_FIELDS(CHECK_FIELD)
#undef CHECK_FIELD
    return FieldCheck::NoField;
}

const char* fieldForm(const std::string& field) {
#define FORM_OF_FIELD(family, name, id, type) \
    if (field == #family "_" #name) {         \
        return _form(VPD::type{});            \
    }
    TAVQZ_VPD_FIELDS(FORM_OF_FIELD)
#undef FORM_OF_FIELD
    return nullptr;
}
