// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "CimText.h"
#include "CsvText.h"
#include "Output.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

std::vector<CIMName> _columns(const std::vector<CIMInstance>& list) {
    std::vector<CIMName> columns;
    for (const CIMInstance& instance : list) {
        for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
            const CIMName name = instance.getProperty(i).getName();
            if (std::find(columns.begin(), columns.end(), name) == columns.end()) {
                columns.push_back(name);
            }
        }
    }
    return columns;
}

std::string _valueOf(const CIMInstance& instance, const CIMName& name) {
    const Uint32 index = instance.findProperty(name);
    return index == PEG_NOT_FOUND ? std::string()
                                  : plainText(instance.getProperty(index).getValue());
}

}  // namespace

std::string CsvOutput::instances(const std::vector<CIMInstance>& list) const {
    const std::vector<CIMName> columns = _columns(list);
    std::vector<std::string> header = {"path"};
    for (const CIMName& column : columns) {
        header.push_back(make_string(column.getString()));
    }
    std::string text = csvLine(header);
    for (const CIMInstance& instance : list) {
        std::vector<std::string> fields = {make_string(instance.getPath().toString())};
        for (const CIMName& column : columns) {
            fields.push_back(_valueOf(instance, column));
        }
        text += csvLine(fields);
    }
    return text;
}

std::string CsvOutput::names(const std::vector<CIMObjectPath>& list) const {
    std::string text = csvLine({"path"});
    for (const CIMObjectPath& path : list) {
        text += csvLine({make_string(path.toString())});
    }
    return text;
}

std::string CsvOutput::classes(const Schema& schema) const {
    std::string text = csvLine({"class", "property", "type", "key", "writable", "provider"});
    for (const auto& declared : schema.classes.classes()) {
        const ProviderEntry* provider =
            schema.registration.instanceProvider(MODEL_NAMESPACE, declared->name);
        for (const PropertyDeclaration& property : declared->properties) {
            text += csvLine(
                {declared->name, property.name,
                 std::string(cimTypeToString(property.type)) + (property.isArray ? "[]" : ""),
                 property.isKey() ? "true" : "false", property.isWritable() ? "true" : "false",
                 provider ? provider->name : ""});
        }
    }
    return text;
}

}  // namespace QZ
