// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "AssetRecord.h"

namespace QZ {

// The lease of this machine, as "asset.dat" holds it (see `AssetRecord` for its life).
//
// Setters store what they are given, unchecked. The money fields have no unit of their own; the
// payment is free text.
class Lease : public AssetRecord {
public:
    // Throws `Error` where the file's lock cannot be had; a missing file reads as empty.
    Lease();
    // Saves every field. Throws `Error` where that fails.
    ~Lease() noexcept(false);  // NOLINT(bugprone-exception-escape)

    unsigned char getLRF() const { return _lrf; }
    void setLRF(unsigned char lrf) { _lrf = lrf; }
    unsigned char getTerm() const { return _term; }
    void setTerm(unsigned char term) { _term = term; }
    unsigned int getBuyout() const { return _buyout; }
    void setBuyout(unsigned int buyout) { _buyout = buyout; }
    unsigned int getFMV() const { return _fmv; }
    void setFMV(unsigned int fmv) { _fmv = fmv; }
    std::string getLessor() const { return _lessor; }
    void setLessor(std::string lessor) { _lessor = std::move(lessor); }
    std::string getPayment() const { return _payment; }
    void setPayment(std::string payment) { _payment = std::move(payment); }
    DateTime getStartDate() const { return _startDate; }
    void setStartDate(DateTime startDate) { _startDate = startDate; }
    DateTime getEndDate() const { return _endDate; }
    void setEndDate(DateTime endDate) { _endDate = endDate; }

private:
    static const RecordField<Lease> _fields[8];

    unsigned char _lrf = 0;  // lease rate factor
    unsigned char _term = 0;
    unsigned int _buyout = 0;
    unsigned int _fmv = 0;  // fair market value
    std::string _lessor;
    std::string _payment;
    DateTime _startDate;
    DateTime _endDate;
};

}  // namespace QZ
