// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>

#include <functional>
#include <type_traits>

#include "RecordValue.h"

namespace QZ {

// What a date that a client sends as an interval does to the record.
enum class OnInterval { Clears, IsIgnored };

// One row of a record class's table: a property of the instance, where its value comes from and,
// if clients may write it, where it goes.
template <class Record>
struct RecordProperty {
    const char* name;
    Pegasus::CIMType type;
    Pegasus::CIMValue (*get)(const Record&);
    // Applies what the modified instance says of this property; null for what is read-only.
    // Throws the CIM library's type mismatch.
    void (*apply)(Record&, const Pegasus::CIMInstance& modified, const char* name);
};

template <class Record, auto Get>
Pegasus::CIMValue getRecordValue(const Record& record) {
    return toCimValue(std::invoke(Get, record));
}

template <class Record, class Value, auto Set, OnInterval Rule>
void applyRecordValue(Record& record, const Pegasus::CIMInstance& modified, const char* name) {
    const Pegasus::Uint32 index = modified.findProperty(Pegasus::CIMName(name));
    if (index == Pegasus::PEG_NOT_FOUND) {
        return;
    }
    Value value{};
    const bool isValue = fromCimValue(modified.getProperty(index).getValue(), value);
    if (isValue || Rule == OnInterval::Clears) {
        std::invoke(Set, record, value);
    }
}

// A row that clients may only read. `Get` is a member or a function of the record.
template <class Record, auto Get>
constexpr RecordProperty<Record> readOnly(const char* name) {
    using Value = std::decay_t<std::invoke_result_t<decltype(Get), const Record&>>;
    return {name, cimTypeOf<Value>(), getRecordValue<Record, Get>, nullptr};
}

// A row that clients may write, through the setter `Set`.
template <class Record, auto Get, auto Set, OnInterval Rule = OnInterval::Clears>
constexpr RecordProperty<Record> writable(const char* name) {
    using Value = std::decay_t<std::invoke_result_t<decltype(Get), const Record&>>;
    return {name, cimTypeOf<Value>(), getRecordValue<Record, Get>,
            applyRecordValue<Record, Value, Set, Rule>};
}

}  // namespace QZ
