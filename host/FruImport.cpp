// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruImport.h"

#include <algorithm>
#include <map>
#include <set>

#include "CimText.h"
#include "ClassRepository.h"
#include "CsvText.h"
#include "Error.h"
#include "Instances.h"
#include "Text.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr std::size_t _keyCount = 3;

using Keys = std::vector<std::string>;

std::string _cellOf(const CIMInstance& unit, const char* column) {
    const Uint32 index = unit.findProperty(column);
    return index == PEG_NOT_FOUND ? std::string() : plainText(unit.getProperty(index).getValue());
}

Keys _keysOf(const CIMInstance& unit) {
    Keys keys;
    for (std::size_t i = 0; i < _keyCount; ++i) {
        keys.push_back(_cellOf(unit, fruColumns()[i]));
    }
    return keys;
}

[[noreturn]] void _fail(std::size_t line, const std::string& what) {
    throw Error("line " + std::to_string(line) + ": " + what);
}

std::string _quoted(const std::string& text) {
    return '"' + text + '"';
}

// Which of fruColumns() each column of the file is.
std::vector<std::size_t> _header(const CsvRecord& record) {
    std::vector<std::size_t> columns;
    for (const std::string& name : record.fields) {
        const auto found = std::find_if(fruColumns().begin(), fruColumns().end(),
                                        [&](const char* column) { return sameName(column, name); });
        if (found == fruColumns().end()) {
            _fail(record.line, "there is no column " + _quoted(name));
        }
        columns.push_back(static_cast<std::size_t>(found - fruColumns().begin()));
        if (std::count(columns.begin(), columns.end(), columns.back()) > 1) {
            _fail(record.line, "the column " + _quoted(name) + " is there twice");
        }
    }
    for (std::size_t i = 0; i < _keyCount; ++i) {
        if (std::count(columns.begin(), columns.end(), i) == 0) {
            _fail(record.line, "there is no column " + std::string(fruColumns()[i]));
        }
    }
    return columns;
}

bool _isEmpty(const CsvRecord& record) {
    return std::all_of(record.fields.begin(), record.fields.end(),
                       [](const std::string& field) { return field.empty(); });
}

std::string _nameOf(const Keys& keys) {
    std::string name;
    for (std::size_t i = 0; i < _keyCount; ++i) {
        name += i == 0 ? "" : ",";
        name.append(fruColumns()[i]).append("=").append(_quoted(keys[i]));
    }
    return name;
}

// Gives the unit the row's cells, and says which of them are news.
std::string _take(CIMInstance& unit, const std::vector<std::size_t>& columns,
                  const CsvRecord& record) {
    std::string news;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const char* const column = fruColumns()[columns[i]];
        const std::string before = _cellOf(unit, column);
        const bool isKey = columns[i] < _keyCount;
        if (before == record.fields[i] && !isKey) {
            continue;
        }
        setProperty(unit, column, CIMValue(make_String(record.fields[i])));
        if (!isKey) {
            news.append(" ").append(column).append(": ").append(_quoted(before));
            news.append(" -> ").append(_quoted(record.fields[i]));
        }
    }
    return news;
}

}  // namespace

const std::vector<const char*>& fruColumns() {
    static const std::vector<const char*> columns = {"FRUNumber", "IdentifyingNumber", "Vendor",
                                                     "Name", "Description"};
    return columns;
}

std::string exportFrus(const std::vector<CIMInstance>& recorded) {
    std::string text = csvLine({fruColumns().begin(), fruColumns().end()});
    for (const CIMInstance& unit : recorded) {
        std::vector<std::string> fields;
        for (const char* const column : fruColumns()) {
            fields.push_back(_cellOf(unit, column));
        }
        text += csvLine(fields);
    }
    return text;
}

std::vector<FruChange> planImport(const std::vector<CIMInstance>& recorded,
                                  const std::string& text) {
    const std::vector<CsvRecord> records = parseCsv(text);
    if (records.empty()) {
        _fail(1, "there is no header");
    }
    const std::vector<std::size_t> columns = _header(records.front());
    std::map<Keys, CIMInstance> known;
    for (const CIMInstance& unit : recorded) {
        known.emplace(_keysOf(unit), unit);
    }
    std::set<Keys> named;
    std::vector<FruChange> changes;
    for (std::size_t row = 1; row < records.size(); ++row) {
        const CsvRecord& record = records[row];
        if (_isEmpty(record)) {
            continue;  // as spreadsheets leave them behind
        }
        if (record.fields.size() != columns.size()) {
            _fail(record.line, std::to_string(record.fields.size()) + " cells under " +
                                   std::to_string(columns.size()) + " columns");
        }
        CIMInstance unit(CIMName("TAVIRA_FRU"));
        std::string news = _take(unit, columns, record);
        const Keys keys = _keysOf(unit);
        if (!named.insert(keys).second) {
            _fail(record.line, "a second " + _nameOf(keys));
        }
        const auto found = known.find(keys);
        if (found != known.end()) {
            unit = found->second.clone();
            news = _take(unit, columns, record);
            if (news.empty()) {
                continue;
            }
        }
        const bool isNew = found == known.end();
        changes.push_back({isNew, unit, (isNew ? "add " : "edit ") + _nameOf(keys) + news});
    }
    return changes;
}

}  // namespace QZ
