// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Due.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <vector>

#include "Calendar.h"
#include "CimDateTimes.h"
#include "Clock.h"
#include "DateTime.h"

namespace QZ {

using namespace Pegasus;

namespace {

// The exit statuses of monitoring plug-ins.
constexpr ExitStatus _fine = static_cast<ExitStatus>(0);
constexpr ExitStatus _warning = static_cast<ExitStatus>(1);
constexpr ExitStatus _critical = static_cast<ExitStatus>(2);

struct Due {
    const char* what;
    std::string endDate;
    std::int64_t days;  // from today; negative when it is over
};

std::int64_t _dayOf(const DateTime& date) {
    return daysFromDate(date.getYear(), date.getMonth(), date.getDay());
}

// The end dates of a class's instances, their calendar days as written.
void _collect(Operations& server, const char* className, const char* what,
              std::vector<Due>& found) {
    const DateTime today(Clock::current().seconds(), DateTime::CalendarDate);
    const CIMObjectPath path(String(), MODEL_NAMESPACE, CIMName(className));
    for (const CIMInstance& instance : server.enumerateInstances(path)) {
        const Uint32 index = instance.findProperty(CIMName("EndDate"));
        if (index == PEG_NOT_FOUND || instance.getProperty(index).getValue().isNull()) {
            continue;
        }
        CIMDateTime value;
        instance.getProperty(index).getValue().get(value);
        const DateTime end = make_DateTime(value);
        if (end.isSet()) {
            const DateTime day = DateTime::fromDay(end.getYear(), end.getMonth(), end.getDay());
            found.push_back({what, day.toString(), _dayOf(day) - _dayOf(today)});
        }
    }
}

std::string _line(const Due& due) {
    const std::int64_t count = due.days < 0 ? -due.days : due.days;
    const std::string days = std::to_string(count) + (count == 1 ? " day" : " days");
    const std::string date = " (" + due.endDate + ")\n";
    if (due.days < 0) {
        return std::string(due.what) + " ran out " + days + " ago" + date;
    }
    return std::string(due.what) + " runs out " + (count == 0 ? "today" : "in " + days) + date;
}

std::string _text(const std::vector<Due>& list, int within, const std::string& format) {
    if (format == "json") {
        nlohmann::ordered_json array = nlohmann::ordered_json::array();
        for (const Due& due : list) {
            array.push_back({{"what", due.what}, {"endDate", due.endDate}, {"days", due.days}});
        }
        return array.dump(2) + "\n";
    }
    std::string text = format == "csv" ? "what,endDate,days\r\n" : "";
    for (const Due& due : list) {
        text += format == "csv" ? std::string(due.what) + "," + due.endDate + "," +
                                      std::to_string(due.days) + "\r\n"
                                : _line(due);
    }
    return text.empty() ? "Nothing runs out within " + std::to_string(within) + " days\n" : text;
}

}  // namespace

int parseDays(const std::string& text) {
    int days = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, days);
    const std::string rest(stop, end);
    if (error != std::errc() || days < 0 || (!rest.empty() && rest != "d")) {
        throw UsageError("\"" + text + "\" is no number of days, such as 90d");
    }
    return days;
}

CommandResult listDue(Operations& server, int within, const std::string& format) {
    std::vector<Due> list;
    _collect(server, "TAVIRA_Lease", "Lease", list);
    _collect(server, "TAVIRA_Warranty", "Warranty", list);
    list.erase(std::remove_if(list.begin(), list.end(),
                              [within](const Due& due) { return due.days > within; }),
               list.end());
    std::stable_sort(list.begin(), list.end(),
                     [](const Due& left, const Due& right) { return left.days < right.days; });
    ExitStatus status = _fine;
    if (!list.empty()) {
        status = list.front().days < 0 ? _critical : _warning;
    }
    return {_text(list, within, format), status};
}

}  // namespace QZ
