// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Gatherers.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/OperationContext.h>

#include "CimText.h"
#include "FruUnits.h"
#include "IpmiFru.h"

namespace QZ {

using namespace Pegasus;

std::atomic<CIMOMHandle*> _fruServer{nullptr};

namespace {

// Where a property of a unit comes from.
struct SourceRow {
    const char* property;
    const char* source;  // a property, or null for who tells
    bool isTrimmed;
};

using SourceTable = std::vector<SourceRow>;

const SourceTable _componentVpd = {
    {"Description", "Description", false},
    {"ElementName", nullptr, false},
    {"FRUNumber", "FieldReplaceableUnitNumber", true},
    {"IdentifyingNumber", "ModelNumber", true},
    {"Name", "Description", false},
    {"Vendor", "ManufacturerId", true},
};

const SourceTable _raidDisk = {
    {"Description", "Description", false},
    {"ElementName", nullptr, false},
    {"FRUNumber", "FRU", true},
    {"IdentifyingNumber", "Model", true},
    {"Name", "Name", false},
    {"Vendor", "Manufacturer", true},
};

const SourceTable _raidController = {
    {"Description", "Description", false},
    {"ElementName", nullptr, false},
    {"FRUNumber", "FRU", true},
    {"Vendor", "Manufacturer", true},
    {"IdentifyingNumber", "Model", true},
    {"Name", "Name", false},
};

void _add(CIMInstance& unit, const char* property, const String& text) {
    unit.addProperty(CIMProperty(CIMName(property), CIMValue(text)));
}

CIMInstance _unit(const CIMInstance& source, const SourceTable& table, const char* teller) {
    CIMInstance unit{CIMName(_fruClassName)};
    for (const SourceRow& row : table) {
        if (row.source == nullptr) {
            _add(unit, row.property, teller);
            continue;
        }
        const Uint32 index = source.findProperty(row.source);
        if (index == PEG_NOT_FOUND || source.getProperty(index).getValue().isNull())
            continue;
        const String text = source.getProperty(index).getValue().toString();
        _add(unit, row.property, row.isTrimmed ? rtrim(ltrim(text)) : text);
    }
    unit.setPath(_fruPath(unit));
    return unit;
}

// Appends what the server's instances of a class make.
void _gather(std::vector<CIMInstance>& units, const char* className, const SourceTable& table,
             const char* teller) {
    CIMOMHandle* const server = _fruServer;
    if (server == nullptr)
        return;
    const Array<CIMInstance> sources = server->enumerateInstances(
        OperationContext(), CIMNamespaceName(_fruNamespace), CIMName(className), false, false,
        false, false, CIMPropertyList());
    for (Uint32 i = 0; i < sources.size(); ++i)
        units.push_back(_unit(sources[i], table, teller));
}

// Whatever a source throws stays here.
template <class Source>
void _tolerate(Source source) noexcept {
    try {
        source();
    } catch (...) {
        // What was gathered before is the answer.
    }
}

CIMInstance _unit(const IpmiFru& fru) {
    CIMInstance unit{CIMName(_fruClassName)};
    _add(unit, "ElementName", "IPMI");
    _add(unit, "FRUNumber", make_String(fru.getNumber()));
    _add(unit, "IdentifyingNumber", make_String(fru.getIdentifyingNumber()));
    _add(unit, "Vendor", make_String(fru.getVendor()));
    _add(unit, "Name", make_String(fru.getName()));
    _add(unit, "Description", make_String(fru.getDescription()));
    unit.setPath(_fruPath(unit));
    return unit;
}

}  // namespace

std::vector<CIMInstance> _getIpmiFruInstances() {
    std::vector<CIMInstance> units;
    _tolerate([&] {
        for (const IpmiFru& fru : GetIpmiFruInstances())
            units.push_back(_unit(fru));
    });
    return units;
}

std::vector<CIMInstance> _getMpaFruInstances() {
    std::vector<CIMInstance> units;
    _tolerate([&] { _gather(units, "TAVIRA_VigilComponentVPD", _componentVpd, "MPA"); });
    return units;
}

std::vector<CIMInstance> _getRaidFruInstances() {
    std::vector<CIMInstance> units;
    _tolerate([&] { _gather(units, "TAVIRA_PhysicalDiskDrive", _raidDisk, "RAID"); });
    _tolerate([&] { _gather(units, "TAVIRA_RAIDController", _raidController, "RAID"); });
    return units;
}

}  // namespace QZ
