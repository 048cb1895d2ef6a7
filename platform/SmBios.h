// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace QZ {

// The machine's SMBIOS structures (DMTF DSP0134), read once at construction and constant after:
// one object may be asked from several threads. The texts in it are the firmware's bytes as they
// are; nothing says that they are printable, or UTF-8.
class SmBios {
public:
    // Damaged: something in the firmware's data is wrong, and what could be read is there.
    // Failed: there is nothing to read, and no tables.
    enum class State { Ok, Damaged, Failed };

    // One structure. A value: copies share the bytes, cost no more than a counter, and outlive
    // the SmBios that they came from.
    class Table {
    public:
        // The table of no structure: type, length and handle 0, no strings.
        Table() = default;

        // The structure at bytes[offset], whose formatted area lies within the bytes. Its strings
        // stand between that area's end and stringsEnd, and the last of them ends in a NUL there.
        Table(std::shared_ptr<const std::string> bytes, std::size_t offset, std::size_t stringsEnd);

        Table(const Table&) = default;
        Table(Table&&) noexcept = default;
        Table& operator=(const Table&) = default;
        Table& operator=(Table&&) noexcept = default;
        virtual ~Table() = default;

        unsigned char getType() const { return getByte(0); }

        // Of the formatted area, its four header bytes included.
        unsigned char getLength() const { return _length; }

        unsigned short getHandle() const;

        // The byte of the formatted area; 0 beyond its length.
        unsigned char getByte(std::size_t offset) const;

        // The string of that number, counted from 1; null for number 0 and for a string that is
        // not there. The text lives as long as this table or a copy of it does.
        const char* getString(unsigned index) const;

    private:
        std::shared_ptr<const std::string> _bytes;
        std::size_t _offset = 0;
        std::size_t _stringsEnd = 0;
        unsigned char _length = 0;
    };

    // What the firmware's bytes say, as decodeSmBios finds it.
    struct Contents {
        State state = State::Failed;
        std::string reason;
        unsigned char majorVersion = 0;
        unsigned char minorVersion = 0;
        std::vector<Table> tables;
    };

    // Reads the files that MachinePaths names. Never throws for want of them, or for what they
    // hold: see state().
    SmBios();

    // In the order of the firmware, the end-of-table structure included.
    const std::vector<Table>& getTables() const { return _contents.tables; }

    // 0.0 where the entry point does not tell.
    unsigned getMajorVersion() const { return _contents.majorVersion; }
    unsigned getMinorVersion() const { return _contents.minorVersion; }

    State state() const { return _contents.state; }

    // Why the state is not Ok, as a sentence for the administrator; empty otherwise.
    const std::string& reason() const { return _contents.reason; }

private:
    Contents _contents;
};

}  // namespace QZ
