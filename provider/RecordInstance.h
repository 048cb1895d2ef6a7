// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

#include "CimDateTimes.h"
#include "CimText.h"
#include "RecordClasses.h"

namespace QZ {

// The path asked for, with these keys: properties of the instance.
Pegasus::CIMObjectPath makeInstancePath(const Pegasus::CIMObjectPath& asked,
                                        const Pegasus::CIMInstance& instance,
                                        const char* const* keys, std::size_t keyCount);

// The record's instance, of the class as the client spelled it. A date that is not set is left
// out.
template <class Record>
Pegasus::CIMInstance buildInstance(const RecordClass<Record>& recordClass, const Record& record,
                                   const Pegasus::CIMObjectPath& asked) {
    Pegasus::CIMInstance instance(asked.getClassName());
    for (const RecordProperty<Record>& property : recordClass) {
        const Pegasus::CIMValue value = property.get(record);
        if (!isUnsetDate(value)) {
            instance.addProperty(Pegasus::CIMProperty(Pegasus::CIMName(property.name), value));
        }
    }
    instance.setPath(makeInstancePath(asked, instance, recordClass.keys, recordClass.keyCount));
    return instance;
}

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
