// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ExpiryCheck.h"

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include "CimText.h"
#include "ClassNames.h"
#include "Clock.h"
#include "DateTime.h"
#include "Error.h"
#include "Instances.h"
#include "Lease.h"
#include "Locale.h"
#include "LogItem.h"
#include "Product.h"
#include "ResourceString.h"
#include "System.h"
#include "Text.h"
#include "Warranty.h"

namespace QZ {

using namespace Pegasus;

// What runs out, and what is said of it.
struct ExpiryRow {
    int type;  // in the journal, from 1
    DateTime (*endDate)();
    const char* alertClass;
    const String& recordClass;
    const char* identifier;
    const wchar_t* messageKeys[2];  // by state
};

namespace {

// States, as the journal keeps them.
constexpr std::uint16_t _valid = 0;
constexpr std::uint16_t _expired = 1;

// CIM_AlertIndication.PerceivedSeverity, by state: information and minor.
constexpr Uint16 _severities[] = {2, 4};
constexpr Uint16 _other = 1;          // AlertType, ProbableCause
constexpr Uint16 _notApplicable = 1;  // Trending

// The record is saved when it goes; that this may fail, on a disk that is full or read-only, is
// no reason to be silent about its end date.
template <class Record>
DateTime _endDate() {
    DateTime endDate;
    bool isRead = false;
    try {
        const Record record;
        endDate = record.getEndDate();
        isRead = true;
    } catch (const Error& failure) {
        if (!isRead)
            throw;
        logItem("ExpiryCheck", failure.what());
    }
    return endDate;
}

const ExpiryRow _rows[] = {
    {1,
     _endDate<Lease>,
     "TAVIRA_LeaseExpirationEvent",
     ClassName::Lease,
     "TAVIRA|CorvanaAgent|Lease",
     {L"MSGID_AID_LEASE_NORMAL", L"MSGID_AID_LEASE_EXPIRED"}},
    {2,
     _endDate<Warranty>,
     "TAVIRA_WarrantyExpirationEvent",
     ClassName::Warranty,
     "TAVIRA|CorvanaAgent|Warranty",
     {L"MSGID_AID_WARRANTY_NORMAL", L"MSGID_AID_WARRANTY_EXPIRED"}},
};

std::uint16_t _stateOf(const DateTime& endDate) {
    const DateTime today(Clock::current().seconds(), DateTime::CalendarDate);
    return endDate.getYear() == 0 || today <= endDate ? _valid : _expired;
}

String _recordPath(const ExpiryRow& row) {
    Array<CIMKeyBinding> keys;
    keys.append(
        CIMKeyBinding(CIMName("Identifier"), String(row.identifier), CIMKeyBinding::STRING));
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName(row.recordClass), keys).toString();
}

String _description(const ExpiryRow& row, std::uint16_t state, const DateTime& endDate) {
    const std::wstring library = Product::getResourceLibrary("", Locale::getLanguageId());
    std::wstring date = make_wstring(endDate.toString());
    if (date.empty())
        date = L"<" + ResourceString(library, L"MSGID_AID_NOT_AVAILABLE").toString() + L">";
    return make_String(
        ResourceString(library, row.messageKeys[state]).format(System::getName(), date));
}

CIMInstance _alert(CIMOMHandle* handle, const ExpiryRow& row, std::uint16_t state,
                   const DateTime& endDate) {
    CIMInstance alert = spawnInstance(handle, CIMNamespaceName("root/tavqz"), row.alertClass);
    const auto set = [&alert](const char* name, const CIMValue& value) {
        setProperty(alert, CIMName(name), value);
    };
    // The indication's class, not the system's: consumers know our alerts by it.
    set("SystemCreationClassName", String("CIM_AlertIndication"));
    set("SystemName", make_String(System::getName()));
    set("AlertType", CIMValue(_other));
    set("PerceivedSeverity", CIMValue(_severities[state]));
    set("ProbableCause", CIMValue(_other));
    set("Trending", CIMValue(_notApplicable));
    set("EventID", _recordPath(row));
    set("EventTime", CIMDateTime::getCurrentDateTime());
    set("ProviderName", String("Corvana|Agent|AssetIDProvider"));
    set("UniqueSystemID", make_String(Product::getUid()));
    set("Description", _description(row, state, endDate));
    return alert;
}

}  // namespace

void ExpiryCheck::check(CIMOMHandle* handle, const Deliver& deliver) {
    for (const ExpiryRow& row : _rows) {
        const DateTime endDate = row.endDate();
        const std::uint16_t state = _stateOf(endDate);
        if (_isChange(row, state))
            deliver(_alert(handle, row, state, endDate));
    }
}

bool ExpiryCheck::_isChange(const ExpiryRow& row, std::uint16_t state) {
    std::uint16_t& last = _lastStates[row.type - 1];
    if (state == last)
        return false;
    last = state;
    return !_journal.checkForRedundantEvent(row.type, 0, 0, state);
}

}  // namespace QZ
