// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Report.h"

#include "CimText.h"
#include "TerminalText.h"
#include "TextTable.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

bool _saysSomething(const CIMValue& value, const PropertyDeclaration* declaration) {
    if (declaration && value == declaration->defaultValue) {
        return false;
    }
    return !plainText(value).empty();
}

std::string _labelOf(const std::string& name, const PropertyDeclaration* declaration) {
    const std::string label = declaration ? declaration->qualifiers.text("DisplayName") : "";
    return label.empty() ? name : label;
}

std::string _lines(const ClassDeclaration& declared, const CIMInstance& instance) {
    TextTable table({"", "", ""});
    bool hasContent = false;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        const CIMConstProperty property = instance.getProperty(i);
        const std::string name = make_string(property.getName().getString());
        const PropertyDeclaration* declaration = declared.find(name);
        if (_saysSomething(property.getValue(), declaration)) {
            table.addRow(
                {"", _labelOf(name, declaration), humanText(property.getValue(), declaration)});
            hasContent = hasContent || !declaration || !declaration->isKey();
        }
    }
    return hasContent ? table.toString() : "  nothing recorded\n";
}

}  // namespace

std::string reportSection(const ClassDeclaration& declared,
                          const std::vector<CIMInstance>& instances) {
    if (instances.empty()) {
        return "";
    }
    const std::string label = declared.qualifiers.text("DisplayName");
    std::string heading = visibleText(label.empty() ? declared.name : label);
    if (instances.size() > 1) {
        heading += " (" + std::to_string(instances.size()) + ")";
    }
    std::string text = heading + "\n" + std::string(textWidth(heading), '=') + "\n";
    for (const CIMInstance& instance : instances) {
        text += &instance == &instances.front() ? "" : "\n";
        text += _lines(declared, instance);
    }
    return text;
}

}  // namespace QZ
