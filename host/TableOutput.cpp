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

std::string _nameOf(const CIMConstProperty& property) {
    return make_string(property.getName().getString());
}

std::string _textOf(const CIMConstProperty& property) {
    return property.getValue().isNull() ? "null" : plainText(property.getValue());
}

std::vector<std::string> _names(const CIMInstance& instance) {
    std::vector<std::string> names;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        names.push_back(_nameOf(instance.getProperty(i)));
    }
    return names;
}

std::vector<std::string> _texts(const CIMInstance& instance) {
    std::vector<std::string> texts;
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

bool _sameShape(const std::vector<CIMInstance>& list) {
    return std::all_of(list.begin(), list.end(), [&](const CIMInstance& instance) {
        return _hasShapeOf(instance, list.front());
    });
}

std::string _block(const CIMInstance& instance) {
    TextTable table({"", ""});
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        table.addRow({_nameOf(instance.getProperty(i)), _textOf(instance.getProperty(i))});
    }
    return visibleText(make_string(instance.getClassName().getString())) + "\n" + table.toString();
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
    if (_sameShape(list)) {
        TextTable table(_names(list.front()));
        auto instance = list.begin();
        while (instance != list.end() && table.getWidth() <= _lineWidth) {
            table.addRow(_texts(*instance++));
        }
        if (table.getWidth() <= _lineWidth) {
            return table.toString();
        }
    }
    std::string text;
    for (const CIMInstance& instance : list) {
        text += text.empty() ? "" : "\n";
        text += _block(instance);
    }
    return text;
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
