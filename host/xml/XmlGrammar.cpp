// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlGrammar.h"

#include "XmlObjects.h"

namespace QZ {

namespace {

// One element of the DTD. Attributes stand between blanks, a required one with '!' and one whose
// values are listed with '=' and the name of the list. Children stand in their order, alternatives
// with '|', each followed by how many there are: 1, ?, * or +.
struct Rule {
    std::string_view name;
    std::string_view attributes;
    std::string_view children;
    bool holdsText = false;
};

#define TAVQZ_FLAVOR "OVERRIDABLE=flag TOSUBCLASS=flag TOINSTANCE=flag TRANSLATABLE=flag"
#define TAVQZ_EMBEDDED "EmbeddedObject=embedded EMBEDDEDOBJECT=embedded"
#define TAVQZ_TYPES                                                                \
    "boolean|string|char16|uint8|sint8|uint16|sint16|uint32|sint32|uint64|sint64|" \
    "datetime|real32|real64"
#define TAVQZ_PROPERTIES "QUALIFIER* PROPERTY|PROPERTY.ARRAY|PROPERTY.REFERENCE*"
#define TAVQZ_ANY_VALUE                                                                     \
    "VALUE|VALUE.ARRAY|VALUE.REFERENCE|CLASSNAME|INSTANCENAME|QUALIFIER.DECLARATION|CLASS|" \
    "INSTANCE|VALUE.NAMEDINSTANCE"

// What an attribute may say, exactly.
constexpr struct {
    std::string_view name;
    std::string_view values;
} VALUES[] = {
    {"flag", "true|false"},
    {"type", TAVQZ_TYPES},
    {"paramtype", TAVQZ_TYPES "|reference|object|instance"},
    {"kind", "string|boolean|numeric"},
    {"embedded", "object|instance"},
};

constexpr Rule RULES[] = {
    {"CIM", "CIMVERSION! DTDVERSION!", "MESSAGE1"},
    {"MESSAGE", "ID! PROTOCOLVERSION!", "SIMPLEREQ1"},
    {"SIMPLEREQ", "", "IMETHODCALL|METHODCALL1"},
    {"IMETHODCALL", "NAME!", "LOCALNAMESPACEPATH1 IPARAMVALUE*"},
    {"IPARAMVALUE", "NAME!", TAVQZ_ANY_VALUE "?"},
    {"METHODCALL", "NAME!", "LOCALCLASSPATH|LOCALINSTANCEPATH1 PARAMVALUE*"},
    {"PARAMVALUE", "NAME! PARAMTYPE=paramtype " TAVQZ_EMBEDDED, TAVQZ_ANY_VALUE "|VALUE.REFARRAY?"},

    {"LOCALNAMESPACEPATH", "", "NAMESPACE+"},
    {"NAMESPACE", "NAME!", ""},
    {"NAMESPACEPATH", "", "HOST1 LOCALNAMESPACEPATH1"},
    {"HOST", "", "", true},
    {"CLASSNAME", "NAME!", ""},
    {"CLASSPATH", "", "NAMESPACEPATH1 CLASSNAME1"},
    {"LOCALCLASSPATH", "", "LOCALNAMESPACEPATH1 CLASSNAME1"},
    {"INSTANCENAME", "CLASSNAME!", "KEYBINDING* KEYVALUE|VALUE.REFERENCE?"},
    {"INSTANCEPATH", "", "NAMESPACEPATH1 INSTANCENAME1"},
    {"LOCALINSTANCEPATH", "", "LOCALNAMESPACEPATH1 INSTANCENAME1"},
    {"KEYBINDING", "NAME!", "KEYVALUE|VALUE.REFERENCE1"},
    {"KEYVALUE", "VALUETYPE=kind TYPE=type", "", true},

    {"VALUE", "", "", true},
    {"VALUE.NULL", "", ""},
    {"VALUE.ARRAY", "", "VALUE|VALUE.NULL*"},
    {"VALUE.REFERENCE", "",
     "CLASSPATH|LOCALCLASSPATH|CLASSNAME|INSTANCEPATH|LOCALINSTANCEPATH|INSTANCENAME1"},
    {"VALUE.REFARRAY", "", "VALUE.REFERENCE|VALUE.NULL*"},
    {"VALUE.NAMEDINSTANCE", "", "INSTANCENAME1 INSTANCE1"},

    {"INSTANCE", "CLASSNAME! xml:lang", TAVQZ_PROPERTIES},
    {"PROPERTY", "NAME! TYPE=type! CLASSORIGIN PROPAGATED=flag xml:lang " TAVQZ_EMBEDDED,
     "QUALIFIER* VALUE?"},
    {"PROPERTY.ARRAY",
     "NAME! TYPE=type! ARRAYSIZE CLASSORIGIN PROPAGATED=flag xml:lang " TAVQZ_EMBEDDED,
     "QUALIFIER* VALUE.ARRAY?"},
    {"PROPERTY.REFERENCE", "NAME! REFERENCECLASS CLASSORIGIN PROPAGATED=flag",
     "QUALIFIER* VALUE.REFERENCE?"},
    {"QUALIFIER", "NAME! TYPE=type! PROPAGATED=flag xml:lang " TAVQZ_FLAVOR, "VALUE|VALUE.ARRAY?"},

    {"CLASS", "NAME! SUPERCLASS xml:lang", TAVQZ_PROPERTIES " METHOD*"},
    {"METHOD", "NAME! TYPE=type CLASSORIGIN PROPAGATED=flag",
     "QUALIFIER* PARAMETER|PARAMETER.REFERENCE|PARAMETER.ARRAY|PARAMETER.REFARRAY*"},
    {"PARAMETER", "NAME! TYPE=type!", "QUALIFIER*"},
    {"PARAMETER.REFERENCE", "NAME! REFERENCECLASS", "QUALIFIER*"},
    {"PARAMETER.ARRAY", "NAME! TYPE=type! ARRAYSIZE", "QUALIFIER*"},
    {"PARAMETER.REFARRAY", "NAME! REFERENCECLASS ARRAYSIZE", "QUALIFIER*"},
    {"QUALIFIER.DECLARATION", "NAME! TYPE=type! ISARRAY=flag ARRAYSIZE " TAVQZ_FLAVOR,
     "SCOPE? VALUE|VALUE.ARRAY?"},
    {"SCOPE",
     "CLASS=flag ASSOCIATION=flag REFERENCE=flag PROPERTY=flag METHOD=flag PARAMETER=flag "
     "INDICATION=flag",
     ""},
};

#undef TAVQZ_FLAVOR
#undef TAVQZ_EMBEDDED
#undef TAVQZ_TYPES
#undef TAVQZ_PROPERTIES
#undef TAVQZ_ANY_VALUE

// Takes what stands before the next separator off the list.
std::string_view _next(std::string_view& list, char separator) {
    const std::size_t end = list.find(separator);
    const std::string_view word = list.substr(0, end);
    list.remove_prefix(end == list.npos ? list.size() : end + 1);
    return word;
}

bool _isAmong(std::string_view names, std::string_view name) {
    while (!names.empty()) {
        if (_next(names, '|') == name) {
            return true;
        }
    }
    return false;
}

const Rule& _rule(const XmlElement& element) {
    for (const Rule& rule : RULES) {
        if (rule.name == element.name) {
            return rule;
        }
    }
    throw XmlLayoutError(element.name + " is no element of a request");
}

// That `text` is in the list of that name; an empty name stands for any text.
void _checkValue(const XmlElement& element, std::string_view attribute, const std::string& text,
                 std::string_view list) {
    for (const auto& known : VALUES) {
        if (known.name == list && !_isAmong(known.values, text)) {
            throw XmlLayoutError(element.name + "'s " + std::string(attribute) + " is \"" + text +
                                 "\"");
        }
    }
}

void _checkAttributes(const XmlElement& element, std::string_view allowed) {
    std::size_t known = 0;
    while (!allowed.empty()) {
        std::string_view list = _next(allowed, ' ');
        const bool isRequired = list.back() == '!';
        list.remove_suffix(isRequired ? 1 : 0);
        const std::string_view name = _next(list, '=');
        if (const std::string* const text = element.attribute(name)) {
            _checkValue(element, name, *text, list);
            ++known;
        } else if (isRequired) {
            throw XmlLayoutError(element.name + " has no " + std::string(name));
        }
    }
    // No name stands twice, or the document were not well-formed.
    if (known != element.attributes.size()) {
        throw XmlLayoutError(element.name + " has an attribute that it may not have");
    }
}

void _checkChildren(const XmlElement& element, std::string_view expected) {
    std::size_t at = 0;
    while (!expected.empty()) {
        std::string_view names = _next(expected, ' ');
        const char count = names.back();
        names.remove_suffix(1);
        const std::size_t begin = at;
        const bool isMany = count == '*' || count == '+';
        while (at < element.children.size() && (isMany || at == begin) &&
               _isAmong(names, element.children[at].name)) {
            ++at;
        }
        if (at == begin && (count == '1' || count == '+')) {
            throw XmlLayoutError(element.name + " has no " + std::string(names));
        }
    }
    if (at != element.children.size()) {
        throw XmlLayoutError(element.name + " may not hold " + element.children[at].name +
                             " there");
    }
}

}  // namespace

void checkXmlGrammar(const XmlElement& element) {
    const Rule& rule = _rule(element);
    if (!rule.holdsText && element.text.find_first_not_of(" \t\r\n") != element.text.npos) {
        throw XmlLayoutError(element.name + " holds text");
    }
    _checkAttributes(element, rule.attributes);
    _checkChildren(element, rule.children);
    for (const XmlElement& child : element.children) {
        checkXmlGrammar(child);
    }
}

}  // namespace QZ
