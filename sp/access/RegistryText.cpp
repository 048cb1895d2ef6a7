// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RegistryText.h"

#include <algorithm>
#include <cstdint>

#include "tavqz/AccessHelpers.h"

namespace QZ {

namespace {

constexpr std::string_view ROOT = "[hkey_local_machine";
constexpr std::string_view STRING_TYPE = "string";
constexpr std::string_view NUMBER_TYPE = "dword";
constexpr int NUMBER_DIGITS = 8;
constexpr std::size_t NPOS = std::string::npos;

bool _standsAt(const std::string& text, std::size_t at, std::string_view what) {
    return text.compare(at, what.size(), what) == 0;
}

}  // namespace

std::string lowerCased(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return result;
}

std::string_view bareName(std::string_view name) {
    const std::size_t first = name.find_first_not_of(" \t\"");
    if (first == name.npos) {
        return {};
    }
    return name.substr(first, name.find_last_not_of(" \t\"") - first + 1);
}

RegistryText::RegistryText(std::string text)
    : _text(std::move(text)),
      _search(lowerCased(_text)),
      _lineEnd(_text.find("\r\n") == NPOS ? "\n" : "\r\n") {}

std::string RegistryText::header(std::string_view key) {
    return std::string(ROOT).append("\\").append(lowerCased(key)).append("]");
}

bool RegistryText::contains(std::string_view wanted) const {
    return _search.find(lowerCased(wanted)) != NPOS;
}

bool RegistryText::_section(std::string_view key, Range& section) const {
    const std::string wanted = header(key);
    const std::size_t at = _search.find(wanted);
    if (at == NPOS) {
        return false;
    }
    section.begin = at + wanted.size();
    section.end = std::min(_search.find(ROOT, section.begin), _search.size());
    return true;
}

RegistryValue RegistryText::find(std::string_view key, std::string_view valueName) const {
    RegistryValue value;
    Range section{};
    if (!_section(key, section)) {
        return value;
    }
    const std::string name = lowerCased(valueName);
    const std::size_t at = _search.find(name, section.begin);
    if (at == NPOS || at + name.size() > section.end) {
        return value;
    }
    const std::size_t sign = _search.find('=', at + name.size());
    if (sign == NPOS) {
        return value;
    }
    if (_standsAt(_search, sign + 1, STRING_TYPE)) {
        const std::size_t open = _search.find('&', sign);
        const std::size_t close = open == NPOS ? NPOS : _search.find('&', open + 1);
        if (close != NPOS) {
            value.kind = RegistryValue::Text;
            value.text = _search.substr(open + 1, close - open - 1);
        }
    } else if (_standsAt(_search, sign + 1, NUMBER_TYPE)) {
        const std::size_t colon = _search.find(':', sign);
        if (colon != NPOS) {
            value.kind = RegistryValue::Number;
            const std::string digits = _search.substr(colon + 1, NUMBER_DIGITS);
            value.number = std::uint32_t(_httoi(digits.c_str(), NUMBER_DIGITS));
        }
    }
    return value;
}

std::size_t RegistryText::_lineEndAt(const Range& section, std::size_t at) const {
    return std::min(_search.find_first_of("\r\n", at), section.end);
}

// The "=" of the entry that begins with the line at `line`; NPOS where none does.
std::size_t RegistryText::_entrySign(const Range& section, std::size_t line) const {
    return std::string_view(_search).substr(0, _lineEndAt(section, line)).find('=', line);
}

bool RegistryText::_hasData(std::size_t sign) const {
    return sign != NPOS &&
           (_standsAt(_search, sign + 1, STRING_TYPE) || _standsAt(_search, sign + 1, NUMBER_TYPE));
}

// Where the entry with that "=" ends: with the line of a text's second "&", which may be a later
// one than the first's. Not so where the section ends before, or where a line between begins an
// entry of its own: the second "&" is missing then, and what follows is not this entry's to lose.
std::size_t RegistryText::_entryEnd(const Range& section, std::size_t sign) const {
    const std::size_t ownEnd = _lineEndAt(section, sign);
    if (!_standsAt(_search, sign + 1, STRING_TYPE)) {
        return ownEnd;
    }
    const std::string_view own = std::string_view(_search).substr(0, ownEnd);
    const std::size_t open = own.find('&', sign);
    const std::size_t close = open == own.npos ? NPOS : _search.find('&', open + 1);
    if (close >= section.end) {
        return ownEnd;
    }
    std::size_t end = ownEnd;
    while (end < close) {
        if (_hasData(_entrySign(section, end + 1))) {
            return ownEnd;
        }
        end = _lineEndAt(section, end + 1);
    }
    return end;
}

bool RegistryText::_entry(const Range& section, std::string_view name, Range& entry) const {
    const std::string wanted = lowerCased(bareName(name));
    std::size_t line = section.begin;
    while (line < section.end) {
        const std::size_t sign = _entrySign(section, line);
        std::size_t end = _lineEndAt(section, line);
        if (sign != NPOS) {
            end = _entryEnd(section, sign);
            const auto found = std::string_view(_search).substr(line, sign - line);
            if (bareName(found) == wanted) {
                entry = {line, end};
                return true;
            }
        }
        line = end + 1;
    }
    return false;
}

void RegistryText::_replace(const Range& range, const std::string& with) {
    _text.replace(range.begin, range.end - range.begin, with);
    _search.replace(range.begin, range.end - range.begin, lowerCased(with));
}

void RegistryText::set(std::string_view key, std::string_view name, std::string_view data) {
    const std::string entry = std::string(name).append("=").append(data);
    Range section{};
    if (!_section(key, section)) {
        const bool openLine = !_text.empty() && _text.back() != '\n';
        const std::size_t end = _text.size();
        _replace({end, end},
                 (openLine ? _lineEnd : "") + header(key) + _lineEnd + entry + _lineEnd);
        return;
    }
    Range old{};
    if (_entry(section, name, old)) {
        _replace(old, entry);
        return;
    }
    // Behind the line of the section's last entry, before the blank lines that part it from the
    // next. The next one's header may stand on that line.
    std::size_t last = _search.find_last_not_of(" \t\r\n", section.end - 1);
    last = std::max(last + 1, section.begin);
    last = std::min(_search.find_first_of("\r\n", last), section.end);
    const bool endsLine = last < _text.size() && (_text[last] == '\r' || _text[last] == '\n');
    _replace({last, last}, _lineEnd + entry + (endsLine ? "" : _lineEnd));
}

}  // namespace QZ
