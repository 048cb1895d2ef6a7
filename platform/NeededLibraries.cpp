// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "NeededLibraries.h"

#include <link.h>

#include <cstdint>
#include <cstring>
#include <fstream>

namespace QZ {

namespace {

using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);

// More than any linker makes, so that a damaged size costs little.
constexpr std::size_t _mostEntries = 4096;
constexpr std::size_t _longestName = 4096;

template <class Record>
bool _read(std::istream& stream, std::uint64_t offset, Record& record) {
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(offset));
    return static_cast<bool>(stream.read(reinterpret_cast<char*>(&record), sizeof record));
}

std::vector<Segment> _segments(std::istream& stream) {
    ElfW(Ehdr) header{};
    std::vector<Segment> segments;
    const unsigned char wordSize = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (!_read(stream, 0, header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_ident[EI_CLASS] != wordSize || header.e_phentsize != sizeof(Segment)) {
        return segments;
    }
    segments.reserve(header.e_phnum);
    for (std::uint64_t index = 0; index < header.e_phnum; ++index) {
        Segment segment{};
        if (_read(stream, header.e_phoff + index * sizeof segment, segment)) {
            segments.push_back(segment);
        }
    }
    return segments;
}

// Where in the file that is which will lie at the address; 0, where the header is, if nowhere.
std::uint64_t _fileOffset(const std::vector<Segment>& segments, std::uint64_t address) {
    for (const Segment& segment : segments) {
        if (segment.p_type == PT_LOAD && address >= segment.p_vaddr &&
            address - segment.p_vaddr < segment.p_filesz) {
            return segment.p_offset + (address - segment.p_vaddr);
        }
    }
    return 0;
}

std::vector<Entry> _dynamicEntries(std::istream& stream, const std::vector<Segment>& segments) {
    std::vector<Entry> entries;
    for (const Segment& segment : segments) {
        if (segment.p_type != PT_DYNAMIC) {
            continue;
        }
        Entry entry{};
        while (entries.size() < _mostEntries &&
               _read(stream, segment.p_offset + entries.size() * sizeof entry, entry) &&
               entry.d_tag != DT_NULL) {
            entries.push_back(entry);
        }
    }
    return entries;
}

std::string _nameAt(std::istream& stream, std::uint64_t offset) {
    std::string name;
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(offset));
    for (int byte = stream.get(); byte > 0 && name.size() < _longestName; byte = stream.get()) {
        name += static_cast<char>(byte);
    }
    return name;
}

}  // namespace

std::vector<std::string> neededLibraries(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<Segment> segments = _segments(stream);
    const std::vector<Entry> entries = _dynamicEntries(stream, segments);
    std::uint64_t names = 0;
    for (const Entry& entry : entries) {
        if (entry.d_tag == DT_STRTAB) {
            names = _fileOffset(segments, entry.d_un.d_ptr);
        }
    }
    std::vector<std::string> needed;
    for (const Entry& entry : entries) {
        if (entry.d_tag == DT_NEEDED && names != 0) {
            needed.push_back(_nameAt(stream, names + entry.d_un.d_val));
        }
    }
    return needed;
}

}  // namespace QZ
