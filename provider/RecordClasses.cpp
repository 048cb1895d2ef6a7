// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RecordClasses.h"

#include <array>

#include "Product.h"

namespace QZ {
namespace {

// What is the same on every machine.

std::string _leaseIdentifier(const Lease&) {
    return "TAVIRA|CorvanaAgent|Lease";
}

std::string _warrantyIdentifier(const Warranty&) {
    return "TAVIRA|CorvanaAgent|Warranty";
}

std::string _vendor(const ComputerSystemDetails&) {
    return "TAV";
}

std::wstring _version(const ComputerSystemDetails&) {
    return Product::getVersion();
}

constexpr const char* _identifierKey[] = {"Identifier"};
constexpr const char* _detailsKeys[] = {"IdentifyingNumber", "Name", "Vendor", "Version"};

constexpr RecordProperty<Lease> _leaseProperties[] = {
    readOnly<Lease, _leaseIdentifier>("Identifier"),
    writable<Lease, &Lease::getLRF, &Lease::setLRF>("LRF"),
    writable<Lease, &Lease::getTerm, &Lease::setTerm>("Term"),
    writable<Lease, &Lease::getBuyout, &Lease::setBuyout>("Buyout"),
    writable<Lease, &Lease::getFMV, &Lease::setFMV>("FMV"),
    writable<Lease, &Lease::getLessor, &Lease::setLessor>("Lessor"),
    writable<Lease, &Lease::getPayment, &Lease::setPayment>("Payment"),
    writable<Lease, &Lease::getStartDate, &Lease::setStartDate>("StartDate"),
    writable<Lease, &Lease::getEndDate, &Lease::setEndDate>("EndDate"),
};

constexpr RecordProperty<Warranty> _warrantyProperties[] = {
    readOnly<Warranty, _warrantyIdentifier>("Identifier"),
    writable<Warranty, &Warranty::getDuration, &Warranty::setDuration>("Duration"),
    writable<Warranty, &Warranty::getDurationUnit, &Warranty::setDurationUnit>("DurationUnit"),
    writable<Warranty, &Warranty::getEndDate, &Warranty::setEndDate>("EndDate"),
    writable<Warranty, &Warranty::getCost, &Warranty::setCost>("Cost"),
};

constexpr std::size_t _pairCount = 5;

constexpr struct {
    const char* label;
    const char* data;
} _pairNames[_pairCount] = {
    {"PersonalizedLabel1", "PersonalizedData1"}, {"PersonalizedLabel2", "PersonalizedData2"},
    {"PersonalizedLabel3", "PersonalizedData3"}, {"PersonalizedLabel4", "PersonalizedData4"},
    {"PersonalizedLabel5", "PersonalizedData5"},
};

template <std::size_t Index>
std::string _label(const ComputerSystemDetails& details) {
    return details.getPersonalizedData().at(Index).first;
}

template <std::size_t Index>
std::string _data(const ComputerSystemDetails& details) {
    return details.getPersonalizedData().at(Index).second;
}

std::string _textOrEmpty(const Pegasus::CIMInstance& modified, const char* name) {
    std::string text;
    const Pegasus::Uint32 index = modified.findProperty(Pegasus::CIMName(name));
    if (index != Pegasus::PEG_NOT_FOUND) {
        fromCimValue(modified.getProperty(index).getValue(), text);
    }
    return text;
}

// The five pairs are one value: they are rebuilt together at every modification, and what the
// client did not send of them becomes empty.
void _applyPairs(ComputerSystemDetails& details, const Pegasus::CIMInstance& modified,
                 const char*) {
    ComputerSystemDetails::PersonalizedData pairs;
    for (const auto& names : _pairNames) {
        std::string label = _textOrEmpty(modified, names.label);
        pairs.emplace_back(std::move(label), _textOrEmpty(modified, names.data));
    }
    details.setPersonalizedData(std::move(pairs));
}

// Stands where the row before it has applied this property already.
void _appliedWithPairs(ComputerSystemDetails&, const Pegasus::CIMInstance&, const char*) {}

using Details = ComputerSystemDetails;

template <auto Get>
constexpr RecordProperty<Details> _pairProperty(const char* name,
                                                decltype(&_applyPairs) apply = _appliedWithPairs) {
    return {name, Pegasus::CIMTYPE_STRING, getRecordValue<Details, Get>, apply};
}

constexpr RecordProperty<Details> _detailsProperties[] = {
    readOnly<Details, &Details::getSystemSerialNumber>("IdentifyingNumber"),
    readOnly<Details, &Details::getProductName>("Name"),
    readOnly<Details, _vendor>("Vendor"),
    readOnly<Details, _version>("Version"),
    readOnly<Details, &Details::getSystemModelName>("ProductName"),
    readOnly<Details, &Details::getSystemName>("CSName"),
    readOnly<Details, &Details::getSystemModelNumber>("Model"),
    readOnly<Details, &Details::getSystemSerialNumber>("SerialNumber"),
    readOnly<Details, &Details::getSystemUuid>("SystemUUID"),
    readOnly<Details, &Details::getAssetIdStringAreaSize>("AssetIDStringArea"),
    writable<Details, &Details::getAssetNumber, &Details::setAssetNumber>("AssetNumber"),
    readOnly<Details, &Details::getAssetIdTag>("AssetIdTag"),
    _pairProperty<_label<0>>("PersonalizedLabel1", _applyPairs),
    _pairProperty<_data<0>>("PersonalizedData1"),
    _pairProperty<_label<1>>("PersonalizedLabel2"),
    _pairProperty<_data<1>>("PersonalizedData2"),
    _pairProperty<_label<2>>("PersonalizedLabel3"),
    _pairProperty<_data<2>>("PersonalizedData3"),
    _pairProperty<_label<3>>("PersonalizedLabel4"),
    _pairProperty<_data<3>>("PersonalizedData4"),
    _pairProperty<_label<4>>("PersonalizedLabel5"),
    _pairProperty<_data<4>>("PersonalizedData5"),
    writable<Details, &Details::getOwnerName, &Details::setOwnerName>("PrimaryOwnerName"),
    writable<Details, &Details::getOwnerPhone, &Details::setOwnerPhone>("PrimaryOwnerPhone"),
    writable<Details, &Details::getOwnerPosition, &Details::setOwnerPosition>(
        "PrimaryOwnerPosition"),
    writable<Details, &Details::getOwnerDepartment, &Details::setOwnerDepartment>(
        "PrimaryOwnerDepartment"),
    writable<Details, &Details::getLastInventoried, &Details::setLastInventoried>(
        "LastInventoried"),
    writable<Details, &Details::getSystemPurchaseDate, &Details::setSystemPurchaseDate>(
        "PurchaseDate"),
    writable<Details, &Details::getSystemLocation, &Details::setSystemLocation>("SystemLocation"),
    writable<Details, &Details::getDateTime, &Details::setDateTime, OnInterval::IsIgnored>(
        "LocalDateTime"),
    writable<Details, &Details::getKELPProfile, &Details::setKELPProfile>("KELPProfile"),
    writable<Details, &Details::getKELPUpdateTime, &Details::setKELPUpdateTime,
             OnInterval::IsIgnored>("KELPUpdateTime"),
    readOnly<Details, &Details::getKELPProfile>("DeploymentProfile"),
    readOnly<Details, &Details::getKELPUpdateTime>("DeploymentUpdateTime"),
};

}  // namespace

constexpr RecordClass<Lease> leaseClass = {_leaseProperties, std::size(_leaseProperties),
                                           _identifierKey, std::size(_identifierKey)};

constexpr RecordClass<Warranty> warrantyClass = {
    _warrantyProperties, std::size(_warrantyProperties), _identifierKey, std::size(_identifierKey)};

constexpr RecordClass<ComputerSystemDetails> computerSystemDetailsClass = {
    _detailsProperties, std::size(_detailsProperties), _detailsKeys, std::size(_detailsKeys)};

}  // namespace QZ
