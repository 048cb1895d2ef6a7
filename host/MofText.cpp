// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofText.h"

#include <cmath>
#include <cstdio>

#include "CimText.h"
#include "Text.h"
#include "ValueText.h"
#include "ValueVisitor.h"

namespace QZ {

using namespace Pegasus;

namespace {

void _appendEscaped(std::string& result, std::uint32_t c) {
    if (c == '"' || c == '\\') {
        result += '\\';
    }
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
        char buffer[8];
        (void)std::snprintf(buffer, sizeof buffer, "\\x%04X", unsigned(c));
        result += buffer;
    } else {
        appendUtf8(result, c);
    }
}

struct MofValueText {
    std::string operator()(Boolean truth) const { return truth ? "true" : "false"; }
    std::string operator()(const String& text) const { return mofString(make_string(text)); }
    std::string operator()(const Char16& c) const {
        char buffer[16];
        (void)std::snprintf(buffer, sizeof buffer, "'\\x%04X'", unsigned(Uint16(c)));
        return buffer;
    }
    std::string operator()(const CIMDateTime& date) const { return (*this)(date.toString()); }
    std::string operator()(const CIMObjectPath& path) const { return (*this)(path.toString()); }
    // Embedded objects travel as the text of their declaration.
    std::string operator()(const CIMObject& object) const {
        return object.isInstance() ? (*this)(CIMInstance(object)) : "null";
    }
    std::string operator()(const CIMInstance& instance) const {
        return mofString(mofInstance(instance));
    }
    std::string operator()(Real32 number) const { return _real(number); }
    std::string operator()(Real64 number) const { return _real(number); }
    template <class Integer>
    std::string operator()(Integer number) const {
        return std::to_string(number);
    }
    template <class T>
    std::string operator()(const Array<T>& array) const {
        std::string text = "{";
        for (Uint32 i = 0; i < array.size(); ++i) {
            text += i ? ", " : "";
            text += (*this)(array[i]);
        }
        return text + "}";
    }

private:
    // A real literal needs a point and a digit behind it.
    template <class Real>
    std::string _real(Real number) const {
        if (!std::isfinite(number)) {
            return "null";
        }
        std::string text = realText(number);
        if (text.find('.') == std::string::npos) {
            text.insert(std::min(text.find('e'), text.size()), ".0");
        }
        return text;
    }
};

// Those that are said here; a boolean one that is true goes without its value.
std::string _qualifiers(const QualifierList& list, const char* indent) {
    std::string text;
    for (const CIMQualifier& qualifier : list) {
        if (qualifier.getPropagated()) {
            continue;
        }
        text += text.empty() ? std::string(indent) + "[" : std::string(",\n ") + indent;
        text += make_string(qualifier.getName().getString());
        const CIMValue& value = qualifier.getValue();
        if (!value.equal(CIMValue(true))) {
            text += value.isArray() ? mofValue(value) : "(" + mofValue(value) + ")";
        }
    }
    return text.empty() ? text : text + "]\n";
}

std::string _type(const PropertyDeclaration& property) {
    return property.type == CIMTYPE_REFERENCE ? property.referenceClass + " ref"
                                              : cimTypeToString(property.type);
}

}  // namespace

std::string mofString(const std::string& text) {
    std::string result = "\"";
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        std::uint32_t c = 0;
        if (!decodeUtf8(at, end, c)) {
            c = 0xFFFD;
            ++at;
        }
        _appendEscaped(result, c);
    }
    return result + "\"";
}

std::string mofValue(const CIMValue& value) {
    return value.isNull() ? "null" : visitValue(value, MofValueText());
}

std::string mofInstance(const CIMInstance& instance) {
    std::string text = "instance of " + make_string(instance.getClassName().getString()) + " {\n";
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        const CIMConstProperty property = instance.getProperty(i);
        text += "    " + make_string(property.getName().getString()) + " = " +
                mofValue(property.getValue()) + ";\n";
    }
    return text + "};\n";
}

std::string mofClass(const ClassDeclaration& declared) {
    std::string text = _qualifiers(declared.qualifiers, "") + "class " + declared.name +
                       (declared.superclass.empty() ? "" : " : " + declared.superclass) + " {\n";
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isPropagated) {
            continue;
        }
        text += _qualifiers(property.qualifiers, "    ") + "    " + _type(property) + " " +
                property.name + (property.isArray ? "[]" : "");
        if (!property.defaultValue.isNull()) {
            text += " = " + mofValue(property.defaultValue);
        }
        text += ";\n";
    }
    return text + "};\n";
}

}  // namespace QZ
