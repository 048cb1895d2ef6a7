// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Lease.h"

namespace QZ {

constexpr RecordField<Lease> Lease::_fields[] = {
    {"LEASE.LRF", &Lease::_lrf},
    {"LEASE.Term", &Lease::_term},
    {"LEASE.Buyout", &Lease::_buyout},
    {"LEASE.FMV", &Lease::_fmv},
    {"LEASE.Lessor", &Lease::_lessor},
    {"LEASE.Payment", &Lease::_payment},
    {"LEASE.StartDate", &Lease::_startDate},
    {"LEASE.EndDate", &Lease::_endDate},
};

Lease::Lease() {
    load([this](const PropertyFile& file) { ReadFields(file, _fields, *this); });
}

Lease::~Lease() noexcept(false) {  // NOLINT(bugprone-exception-escape)
    save([this](PropertyFile& file) { WriteFields(file, _fields, *this); });
}

}  // namespace QZ
