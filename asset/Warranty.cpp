// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Warranty.h"

namespace QZ {

constexpr RecordField<Warranty> Warranty::_fields[] = {
    {"WARRANTY.Duration", &Warranty::_duration},
    {"WARRANTY.DurationUnit", &Warranty::_durationUnit},
    {"WARRANTY.EndDate", &Warranty::_endDate},
    {"WARRANTY.Cost", &Warranty::_cost},
};

Warranty::Warranty() {
    load([this](const PropertyFile& file) { ReadFields(file, _fields, *this); });
}

Warranty::~Warranty() noexcept(false) {  // NOLINT(bugprone-exception-escape)
    save([this](PropertyFile& file) { WriteFields(file, _fields, *this); });
}

}  // namespace QZ
