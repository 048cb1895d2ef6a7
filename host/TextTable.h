// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// Text in columns, for a terminal: everything put in is made visible first.
class TextTable {
public:
    explicit TextTable(const std::vector<std::string>& header);

    // As many cells as the header has.
    void addRow(const std::vector<std::string>& cells);

    // Columns of the widest line.
    std::size_t getWidth() const;

    // Columns two blanks apart, each as wide as its widest cell; no blanks at a line's end. The
    // header is underlined, and left out where all its cells are empty.
    std::string toString() const;

private:
    void _appendLine(const std::vector<std::string>& cells, std::string& text) const;

    std::vector<std::size_t> _widths;
    std::vector<std::vector<std::string>> _rows;  // the header first
};

}  // namespace QZ
