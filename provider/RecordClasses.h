// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ComputerSystemDetails.h"
#include "Lease.h"
#include "RecordProperty.h"
#include "Warranty.h"

namespace QZ {

// A record class: the properties of its one instance in their order, and those among them that
// are its keys, in theirs.
template <class Record>
struct RecordClass {
    const RecordProperty<Record>* begin() const { return properties; }
    const RecordProperty<Record>* end() const { return properties + propertyCount; }

    const RecordProperty<Record>* properties;
    std::size_t propertyCount;
    const char* const* keys;
    std::size_t keyCount;
};

extern const RecordClass<Lease> leaseClass;
extern const RecordClass<Warranty> warrantyClass;
extern const RecordClass<ComputerSystemDetails> computerSystemDetailsClass;

}  // namespace QZ
