// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMObject.h>

#include <charconv>
#include <cmath>
#include <string_view>
#include <type_traits>

#include "ValueVisitor.h"
#include "XmlText.h"
#include "XmlWriting.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Appends the text of a value, and says in which element it stands.
class ValueWriter {
public:
    explicit ValueWriter(std::string& xml) : _xml(xml) {}

    template <class T>
    bool operator()(const T& scalar) {
        _element(scalar);
        return true;
    }

    template <class T>
    bool operator()(const Array<T>& array) {
        const char* const name =
            std::is_same_v<T, CIMObjectPath> ? "VALUE.REFARRAY" : "VALUE.ARRAY";
        _xml.append("<").append(name).append(">");
        for (Uint32 i = 0; i < array.size(); ++i) {
            _element(array[i]);
        }
        _xml.append("</").append(name).append(">");
        return true;
    }

private:
    template <class T>
    void _element(const T& value) {
        if constexpr (std::is_same_v<T, CIMObjectPath>) {
            _xml += "<VALUE.REFERENCE>";
            appendInstancePath(_xml, value);
            _xml += "</VALUE.REFERENCE>";
        } else {
            _xml += "<VALUE>";
            _text(value);
            _xml += "</VALUE>";
        }
    }

    void _text(Boolean value) { _xml += value ? "TRUE" : "FALSE"; }
    void _text(const String& value) { appendXmlText(_xml, value); }
    void _text(const Char16& value) { appendXmlText(_xml, String(&value, 1)); }
    void _text(const CIMDateTime& value) { appendXmlText(_xml, value.toString()); }
    // Embedded objects are texts that hold XML.
    void _text(const CIMObject& value) { _text(CIMInstance(value)); }
    void _text(const CIMInstance& value) {
        std::string xml;
        appendInstance(xml, value, XmlForm());
        appendXmlText(_xml, xml);
    }

    template <class T>
    std::enable_if_t<std::is_integral_v<T>> _text(T value) {
        char text[24];
        const auto [end, error] = std::to_chars(text, text + sizeof text, value);
        _xml.append(text, end);
    }

    template <class T>
    std::enable_if_t<std::is_floating_point_v<T>> _text(T value) {
        if (!std::isfinite(value)) {
            _xml += std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF";
            return;
        }
        // The fewest digits that bring back the same value, with the point that DSP0201 wants,
        // whatever the locale.
        char text[40];
        const auto [end, error] =
            std::to_chars(text, text + sizeof text, value, std::chars_format::scientific);
        const std::string_view number(text, std::size_t(end - text));
        const std::size_t exponent = number.find('e');
        _xml.append(number.substr(0, exponent));
        _xml += number.find('.') == number.npos ? ".0" : "";
        _xml.append(number.substr(exponent));
    }

    std::string& _xml;
};

}  // namespace

void appendValue(std::string& xml, const CIMValue& value) {
    if (!value.isNull()) {
        visitValue(value, ValueWriter(xml));
    }
}

void appendTextValue(std::string& xml, const std::string& utf8) {
    xml += "<VALUE>";
    appendXmlText(xml, utf8);
    xml += "</VALUE>";
}

}  // namespace QZ
