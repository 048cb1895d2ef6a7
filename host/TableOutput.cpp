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

using Properties = std::vector<CIMConstProperty>;

// The properties of an instance, in place of those that are there.
void _take(const CIMConstInstance& instance, Properties& properties) {
    properties.clear();
    const Uint32 count = instance.getPropertyCount();
    properties.reserve(count);
    for (Uint32 i = 0; i < count; ++i) {
        properties.push_back(instance.getProperty(i));
    }
}

Properties _propertiesOf(const CIMConstInstance& instance) {
    Properties properties;
    _take(instance, properties);
    return properties;
}

bool _haveSameNames(const Properties& left, const Properties& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const CIMConstProperty& a, const CIMConstProperty& b) {
                          return a.getName().getString() == b.getName().getString();
                      });
}

void _appendText(std::string& text, const CIMConstProperty& property) {
    const CIMValue& value = property.getValue();
    if (value.isNull()) {
        text += "null";
    } else {
        appendPlainText(text, value);
    }
}

std::vector<std::string> _names(const Properties& properties) {
    std::vector<std::string> names;
    names.reserve(properties.size());
    for (const CIMConstProperty& property : properties) {
        names.push_back(make_string(property.getName().getString()));
    }
    return names;
}

std::vector<std::string> _texts(const Properties& properties) {
    std::vector<std::string> texts(properties.size());
    for (std::size_t i = 0; i < properties.size(); ++i) {
        _appendText(texts[i], properties[i]);
    }
    return texts;
}

// In lines, as a table; empty where that would be too wide or their properties are
// not the same.
std::string _lines(const std::vector<CIMInstance>& list) {
    const Properties first = _propertiesOf(list.front());
    TextTable table(_names(first));
    for (const CIMInstance& instance : list) {
        const Properties properties = _propertiesOf(instance);
        if (table.getWidth() > _lineWidth ||
            instance.getClassName() != list.front().getClassName() ||
            !_haveSameNames(properties, first)) {
            return "";
        }
        table.addRow(_texts(properties));
    }
    return table.getWidth() > _lineWidth ? "" : table.toString();
}

// Writes instances one below the other: the class, and a line for each property. Not by a table,
// which would hold in memory what is written line after line.
class Blocks {
public:
    void add(const CIMInstance& instance) {
        _take(instance, _properties);
        _text += _text.empty() ? "" : "\n";
        _addClass(instance.getClassName());
        if (!_haveSameNames(_properties, _labelled)) {
            _labels = _labelsOf(_properties);
        }
        for (std::size_t i = 0; i < _properties.size(); ++i) {
            _value.clear();
            _appendText(_value, _properties[i]);
            _text += _labels[i];
            appendVisibleText(_text, _value);
            _text.erase(_text.find_last_not_of(' ') + 1);
            _text += '\n';
        }
        _properties.swap(_labelled);
    }

    std::string take() { return std::move(_text); }

private:
    void _addClass(const CIMName& name) {
        if (_class.empty() || _className != name.getString()) {
            _className = name.getString();
            _class = visibleText(make_string(name.getString())) + '\n';
        }
        _text += _class;
    }

    // The names of an instance's properties, visible and filled up with blanks to the column of the
    // values.
    static std::vector<std::string> _labelsOf(const Properties& properties) {
        std::vector<std::string> labels = _names(properties);
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

    std::string _text;
    String _className;
    std::string _class;  // its line
    Properties _properties;
    Properties _labelled;  // that the labels are of
    std::vector<std::string> _labels;
    std::string _value;
};

std::string _blocks(const std::vector<CIMInstance>& list) {
    Blocks blocks;
    for (const CIMInstance& instance : list) {
        blocks.add(instance);
    }
    return blocks.take();
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
