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

// Writes behind what is there.
class PlainText {
public:
    explicit PlainText(std::string& text) : _text(text) {}

    void operator()(const String& text) const { append_string(_text, text); }
    void operator()(const Char16& c) const { append_string(_text, String(&c, 1)); }
    void operator()(const CIMDateTime& date) const { append_string(_text, date.toString()); }
    void operator()(const CIMObjectPath& path) const { append_string(_text, path.toString()); }
    void operator()(const CIMObject& object) const { _embedded(object); }
    void operator()(const CIMInstance& instance) const { _embedded(instance); }
    void operator()(Boolean truth) const { _text += truth ? "true" : "false"; }
    void operator()(Real32 number) const { _text += realText(number); }
    void operator()(Real64 number) const { _text += realText(number); }
    template <class Integer>
    void operator()(Integer number) const {
        _text += std::to_string(number);
    }
    template <class T>
    void operator()(const Array<T>& array) const {
        for (Uint32 i = 0; i < array.size(); ++i) {
            _text += i ? ", " : "";
            (*this)(array[i]);
        }
    }

private:
    template <class Object>
    void _embedded(const Object& object) const {
        _text += '(';
        append_string(_text, object.getClassName().getString());
        _text += ')';
    }

    std::string& _text;
};

}  // namespace

std::string realText(Real32 number) {
    return _realText(number);
}

std::string realText(Real64 number) {
    return _realText(number);
}

std::string plainText(const CIMValue& value) {
    std::string text;
    appendPlainText(text, value);
    return text;
}

void appendPlainText(std::string& text, const CIMValue& value) {
    if (!value.isNull()) {
        visitValue(value, PlainText(text));
    }
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
