// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

#include <vector>

#include "CimDateTimes.h"
#include "CimText.h"
#include "RecordClasses.h"

namespace QZ {

// The path asked for, with these keys: properties of the instance.
Pegasus::CIMObjectPath makeInstancePath(const Pegasus::CIMObjectPath& asked,
                                        const Pegasus::CIMInstance& instance,
                                        const std::vector<Pegasus::CIMName>& keys);

// Makes instances of a record class, which share the names in them: checking a name takes as long
// as all else about a property. The record class must outlive it. Any thread.
template <class Record>
class InstanceBuilder {
public:
    explicit InstanceBuilder(const RecordClass<Record>& recordClass)
        : _class(recordClass), _keys(recordClass.keys, recordClass.keys + recordClass.keyCount) {
        _names.reserve(recordClass.propertyCount);
        for (const RecordProperty<Record>& property : recordClass) {
            _names.emplace_back(property.name);
        }
    }

    // The record's instance, of the class as the client spelled it in the path asked for. A date
    // that is not set is left out.
    Pegasus::CIMInstance build(const Record& record, const Pegasus::CIMObjectPath& asked) const {
        Pegasus::CIMInstance instance(asked.getClassName());
        auto name = _names.begin();
        for (const RecordProperty<Record>& property : _class) {
            const Pegasus::CIMValue value = property.get(record);
            if (!isUnsetDate(value)) {
                instance.addProperty(Pegasus::CIMProperty(*name, value));
            }
            ++name;
        }
        instance.setPath(makeInstancePath(asked, instance, _keys));
        return instance;
    }

private:
    const RecordClass<Record>& _class;
    const std::vector<Pegasus::CIMName> _keys;
    std::vector<Pegasus::CIMName> _names;  // in the order of the properties
};

// Throws CIM_ERR_INVALID_PARAMETER, naming the property, where it is a point in time on a day that
// the calendar does not have or that asterisks leave open.
void requireDay(const Pegasus::CIMInstance& modified, const char* name);

// Applies to the record, in the table's order, what the modified instance carries of its writable
// properties. Dates are looked at before anything is applied. A value of another type throws the
// CIM library's type mismatch; what was applied before it stays.
template <class Record>
void applyInstance(const RecordClass<Record>& recordClass, const Pegasus::CIMInstance& modified,
                   Record& record) {
    for (const RecordProperty<Record>& property : recordClass) {
        if (property.apply != nullptr && property.type == Pegasus::CIMTYPE_DATETIME) {
            requireDay(modified, property.name);
        }
    }
    for (const RecordProperty<Record>& property : recordClass) {
        if (property.apply != nullptr) {
            property.apply(record, modified, property.name);
        }
    }
}

}  // namespace QZ
