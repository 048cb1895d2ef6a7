// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ValueText.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "CimDateTimes.h"
#include "CimText.h"
#include "ValueVisitor.h"

namespace QZ {

using namespace Pegasus;

namespace {

template <class T>
std::string _realText(T number) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::string(buffer, result.ptr);
}

struct PlainText {
    std::string operator()(const String& text) const { return make_string(text); }
    std::string operator()(const Char16& c) const { return make_string(String(&c, 1)); }
    std::string operator()(const CIMDateTime& date) const { return make_string(date.toString()); }
    std::string operator()(const CIMObjectPath& path) const { return make_string(path.toString()); }
    std::string operator()(const CIMObject& object) const { return _embedded(object); }
    std::string operator()(const CIMInstance& instance) const { return _embedded(instance); }
    std::string operator()(Boolean truth) const { return truth ? "true" : "false"; }
    std::string operator()(Real32 number) const { return realText(number); }
    std::string operator()(Real64 number) const { return realText(number); }
    template <class Integer>
    std::string operator()(Integer number) const {
        return std::to_string(number);
    }
    template <class T>
    std::string operator()(const Array<T>& array) const {
        std::string text;
        for (Uint32 i = 0; i < array.size(); ++i) {
            text += i ? ", " : "";
            text += (*this)(array[i]);
        }
        return text;
    }

private:
    template <class Object>
    std::string _embedded(const Object& object) const {
        return "(" + make_string(object.getClassName().getString()) + ")";
    }
};

}  // namespace

std::string realText(Real32 number) {
    return _realText(number);
}

std::string realText(Real64 number) {
    return _realText(number);
}

std::string plainText(const CIMValue& value) {
    return value.isNull() ? std::string() : visitValue(value, PlainText());
}

std::string humanDate(const CIMDateTime& value) {
    const DateTime date = make_DateTime(value);
    if (!date.isSet()) {
        return make_string(value.toString());
    }
    char buffer[64];
    (void)std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", date.getYear(), date.getMonth(),
                        date.getDay());
    std::string text = buffer;
    if (date.getHour() || date.getMinute() || date.getSecond() || date.getMillisecond()) {
        const unsigned offset = unsigned(std::abs(date.getOffset()));
        (void)std::snprintf(buffer, sizeof buffer, " %02d:%02d:%02d %c%02u:%02u", date.getHour(),
                            date.getMinute(), date.getSecond(), date.getOffset() < 0 ? '-' : '+',
                            offset / 60, offset % 60);
        text += buffer;
    }
    return text;
}

std::string humanText(const CIMValue& value, const PropertyDeclaration* declaration) {
    if (!value.isNull() && !value.isArray() && value.getType() == CIMTYPE_DATETIME) {
        CIMDateTime date;
        value.get(date);
        return humanDate(date);
    }
    std::string text = plainText(value);
    if (!declaration || text.empty()) {
        return text;
    }
    if (const std::string meaning = declaration->meaning(text); !meaning.empty()) {
        return meaning + " (" + text + ")";
    }
    const std::string units = declaration->qualifiers.text("Units");
    return units.empty() ? text : text + " " + units;
}

}  // namespace QZ
