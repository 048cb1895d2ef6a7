// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CsvText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Error.h"

namespace QZ {

namespace {

std::string _field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + "\"";
}

class Parser {
public:
    explicit Parser(std::string_view text) : _rest(text) {
        if (_rest.substr(0, 3) == "\xEF\xBB\xBF") {
            _rest.remove_prefix(3);
        }
        const std::string_view first = _rest.substr(0, _rest.find('\n'));
        const bool hasComma = first.find(',') != std::string_view::npos;
        _separator = hasComma || first.find(';') == std::string_view::npos ? ',' : ';';
    }

    std::vector<CsvRecord> records() {
        std::vector<CsvRecord> all;
        while (!_rest.empty()) {
            CsvRecord record = _record();
            if (record.fields.size() > 1 || !record.fields.front().empty()) {
                all.push_back(std::move(record));
            }
        }
        return all;
    }

private:
    CsvRecord _record() {
        CsvRecord record{_line, {}};
        for (;;) {
            const bool isQuoted = !_rest.empty() && _rest.front() == '"';
            record.fields.push_back(isQuoted ? _quoted() : _plain());
            if (_rest.empty() || _endLine()) {
                return record;
            }
            if (_rest.front() != _separator) {
                _fail("text behind a closing quote");
            }
            _rest.remove_prefix(1);
        }
    }

    std::string _plain() {
        const char ends[] = {_separator, '\r', '\n', '\0'};
        const std::size_t size = std::min(_rest.find_first_of(ends), _rest.size());
        std::string field(_rest.substr(0, size));
        if (field.find('"') != std::string::npos) {
            _fail("a quote in the middle of a field");
        }
        _rest.remove_prefix(size);
        return field;
    }

    std::string _quoted() {
        std::string field;
        for (;;) {
            _rest.remove_prefix(1);
            const std::size_t quote = _rest.find('"');
            if (quote == std::string_view::npos) {
                _fail("a quote that is never closed");
            }
            field.append(_rest.substr(0, quote));
            _rest.remove_prefix(quote + 1);
            if (_rest.empty() || _rest.front() != '"') {
                break;
            }
            field += '"';
        }
        _line += static_cast<std::size_t>(std::count(field.begin(), field.end(), '\n'));
        return field;
    }

    bool _endLine() {
        const std::string_view end = _rest.substr(0, 2) == "\r\n" ? "\r\n" : "\n";
        if (_rest.substr(0, end.size()) != end) {
            return false;
        }
        _rest.remove_prefix(end.size());
        ++_line;
        return true;
    }

    [[noreturn]] void _fail(const char* what) const {
        throw Error("line " + std::to_string(_line) + ": " + what);
    }

    std::string_view _rest;
    char _separator = ',';
    std::size_t _line = 1;
};

}  // namespace

std::string csvLine(const std::vector<std::string>& fields) {
    std::string line;
    for (const std::string& field : fields) {
        line += &field == &fields.front() ? "" : ",";
        line += _field(field);
    }
    return line + "\r\n";
}

std::vector<CsvRecord> parseCsv(const std::string& text) {
    return Parser(text).records();
}

}  // namespace QZ
