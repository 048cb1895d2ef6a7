// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "CimText.h"
#include "Output.h"
#include "TerminalText.h"
#include "TextTable.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

// The width up to which instances stand in lines, one below the other.
constexpr std::size_t _lineWidth = 120;

// Between a property's name and its value.
constexpr std::size_t _gap = 2;

std::string _nameOf(const CIMConstProperty& property) {
    return make_string(property.getName().getString());
}

std::string _textOf(const CIMConstProperty& property) {
    return property.getValue().isNull() ? "null" : plainText(property.getValue());
}

std::vector<std::string> _names(const CIMInstance& instance) {
    std::vector<std::string> names;
    names.reserve(instance.getPropertyCount());
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        names.push_back(_nameOf(instance.getProperty(i)));
    }
    return names;
}

std::vector<std::string> _texts(const CIMInstance& instance) {
    std::vector<std::string> texts;
    texts.reserve(instance.getPropertyCount());
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        texts.push_back(_textOf(instance.getProperty(i)));
    }
    return texts;
}

bool _hasShapeOf(const CIMInstance& instance, const CIMInstance& model) {
    if (instance.getClassName() != model.getClassName() ||
        instance.getPropertyCount() != model.getPropertyCount()) {
        return false;
    }
    for (Uint32 i = 0; i < model.getPropertyCount(); ++i) {
        if (instance.getProperty(i).getName().getString() !=
            model.getProperty(i).getName().getString()) {
            return false;
        }
    }
    return true;
}

// In lines, as a table; empty where that would be too wide or their properties are
// not the same.
std::string _lines(const std::vector<CIMInstance>& list) {
    TextTable table(_names(list.front()));
    for (const CIMInstance& instance : list) {
        if (table.getWidth() > _lineWidth || !_hasShapeOf(instance, list.front())) {
            return "";
        }
        table.addRow(_texts(instance));
    }
    return table.getWidth() > _lineWidth ? "" : table.toString();
}

// The names of an instance's properties, visible and filled up with blanks to the column of the
// values.
std::vector<std::string> _labels(const CIMInstance& instance) {
    std::vector<std::string> labels = _names(instance);
    std::size_t width = 0;
    for (std::string& label : labels) {
        label = visibleText(label);
        width = std::max(width, textWidth(label));
    }
    for (std::string& label : labels) {
        label.append(width - textWidth(label) + _gap, ' ');
    }
    return labels;
}

// One below the other: the class, and a line for each property. Not by a table, which would hold in
// memory what is written line after line.
std::string _blocks(const std::vector<CIMInstance>& list) {
    std::string text;
    std::vector<std::string> labels;
    const CIMInstance* last = nullptr;
    for (const CIMInstance& instance : list) {
        if (!last || !_hasShapeOf(instance, *last)) {
            labels = _labels(instance);
        }
        last = &instance;
        text += text.empty() ? "" : "\n";
        appendVisibleText(text, make_string(instance.getClassName().getString()));
        text += '\n';
        for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
            text += labels[i];
            appendVisibleText(text, _textOf(instance.getProperty(i)));
            text.erase(text.find_last_not_of(' ') + 1);
            text += '\n';
        }
    }
    return text;
}

std::string _keys(const ClassDeclaration& declared) {
    std::string text;
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isKey()) {
            text += text.empty() ? property.name : ", " + property.name;
        }
    }
    return text;
}

}  // namespace

std::string TableOutput::instances(const std::vector<CIMInstance>& list) const {
    if (list.empty()) {
        return "";
    }
    const std::string lines = _lines(list);
    return lines.empty() ? _blocks(list) : lines;
}

std::string TableOutput::names(const std::vector<CIMObjectPath>& list) const {
    std::string text;
    for (const CIMObjectPath& path : list) {
        text += visibleText(make_string(path.toString())) + "\n";
    }
    return text;
}

std::string TableOutput::classes(const Schema& schema) const {
    TextTable table({"Class", "Provider", "Keys"});
    for (const auto& declared : schema.classes.classes()) {
        const ProviderEntry* provider =
            schema.registration.instanceProvider(MODEL_NAMESPACE, declared->name);
        table.addRow({declared->name, provider ? provider->name : "", _keys(*declared)});
    }
    return table.toString();
}

}  // namespace QZ
