// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TextTable.h"

#include <algorithm>

#include "TerminalText.h"

namespace QZ {

namespace {
constexpr std::size_t _gap = 2;
}

TextTable::TextTable(const std::vector<std::string>& header) : _widths(header.size()) {
    addRow(header);
}

void TextTable::addRow(const std::vector<std::string>& cells) {
    std::vector<std::string> row;
    row.reserve(_widths.size());
    for (std::size_t i = 0; i < _widths.size(); ++i) {
        row.push_back(visibleText(cells[i]));
        _widths[i] = std::max(_widths[i], textWidth(row.back()));
    }
    _rows.push_back(std::move(row));
}

std::size_t TextTable::getWidth() const {
    std::size_t width = 0;
    for (const std::size_t column : _widths) {
        width += column + _gap;
    }
    return width - std::min(width, _gap);
}

void TextTable::_appendLine(const std::vector<std::string>& cells, std::string& text) const {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        text += cells[i];
        text.append(_widths[i] - textWidth(cells[i]) + _gap, ' ');
    }
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
}

std::string TextTable::toString() const {
    std::string text;
    const bool hasHeader = std::any_of(_rows.front().begin(), _rows.front().end(),
                                       [](const std::string& cell) { return !cell.empty(); });
    if (hasHeader) {
        std::vector<std::string> rule;
        for (const std::size_t width : _widths) {
            rule.emplace_back(width, '-');
        }
        _appendLine(_rows.front(), text);
        _appendLine(rule, text);
    }
    for (std::size_t i = 1; i < _rows.size(); ++i) {
        _appendLine(_rows[i], text);
    }
    return text;
}

}  // namespace QZ
