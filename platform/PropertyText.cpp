// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyText.h"

#include <algorithm>
#include <utility>

#include "PropertyEscape.h"

namespace QZ {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view KeptNote = "# kept, not understood: ";

std::string_view trim(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

// A line's own text, without its end, the blanks around it and the byte order mark that editors of
// other systems put before the first.
std::string_view bodyOf(std::string_view line) {
    if (!line.empty() && line.back() == '\n')
        line.remove_suffix(1);
    line = trim(line);
    if (line.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        line = trim(line.substr(ByteOrderMark.size()));
    return line;
}

std::string_view endOf(std::string_view line) {
    constexpr std::string_view WideEnd = "\r\n";
    const bool isWide =
        line.size() >= WideEnd.size() && line.substr(line.size() - WideEnd.size()) == WideEnd;
    return isWide ? WideEnd : WideEnd.substr(1);
}

std::string_view withoutTrailingNuls(std::string_view text) {
    return text.substr(0, text.find_last_not_of('\0') + 1);
}

}  // namespace

PropertyText::PropertyText(std::string text) {
    std::string_view rest = _texts.emplace_front(std::move(text));
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('\n'), rest.size() - 1) + 1;
        const std::string_view line = rest.substr(0, length);
        if (line.find('\0') != std::string_view::npos)
            _isDamaged = true;
        else
            _lines.push_back(_parse(line));
        rest.remove_prefix(length);
    }
}

PropertyText::Line PropertyText::_parse(std::string_view text) {
    Line line;
    line.text = text;
    const std::string_view body = bodyOf(text);
    const std::size_t equals = body.find('=');
    line.isEntry = equals != std::string_view::npos && body[0] != '#';
    if (line.isEntry) {
        line.key = trim(body.substr(0, equals));
        line.value = trim(body.substr(equals + 1));
    }
    return line;
}

PropertyText::Line PropertyText::_make(std::string text) {
    return _parse(_texts.emplace_front(std::move(text)));
}

const PropertyText::Line* PropertyText::_find(std::string_view key) const {
    const auto found = std::find_if(_lines.rbegin(), _lines.rend(), [key](const Line& line) {
        return line.isEntry && readsAs(line.key, key);
    });
    return found == _lines.rend() ? nullptr : &*found;
}

std::string PropertyText::get(std::string_view key) const {
    const Line* const line = _find(key);
    return line != nullptr ? unescape(line->value) : std::string();
}

bool PropertyText::holds(std::string_view key, std::string_view value) const {
    const Line* const line = _find(key);
    return line != nullptr && readsAs(line->value, withoutTrailingNuls(value));
}

void PropertyText::set(std::string_view key, std::string_view value, bool keepOld) {
    value = withoutTrailingNuls(value);
    const Line* const old = _find(key);
    if (old != nullptr && readsAs(old->value, value))
        return;
    std::string entry = escapeKey(key) + '=' + escapeValue(value);
    if (old == nullptr) {
        if (!_lines.empty() && _lines.back().text.back() != '\n')
            _lines.back() = _make(std::string(_lines.back().text) + '\n');
        _lines.push_back(_make(entry + '\n'));
        return;
    }
    const std::string_view oldText = old->text;
    const auto at = _lines.begin() + (old - _lines.data());
    *at = _make(entry.append(endOf(oldText)));
    if (keepOld)
        _lines.insert(at,
                      _make(std::string(KeptNote).append(bodyOf(oldText)).append(endOf(oldText))));
}

std::string PropertyText::compose() const {
    std::string text;
    for (const Line& line : _lines)
        text += line.text;
    return text;
}

}  // namespace QZ
