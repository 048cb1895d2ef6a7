// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "NeededLibraries.h"

#include <fcntl.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "Descriptor.h"

namespace QZ {

namespace {

using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);

// More than any linker makes, so that a damaged size costs little.
constexpr std::size_t _mostEntries = 4096;
constexpr std::size_t _longestName = 256;

// As much of it as the file has.
std::string _bytes(const Descriptor& file, std::uint64_t offset, std::size_t size) {
    std::string bytes(size, '\0');
    const ssize_t got = pread(file.get(), bytes.data(), size, static_cast<off_t>(offset));
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

// Whole ones, up to so many.
template <class Record>
std::vector<Record> _records(const Descriptor& file, std::uint64_t offset, std::size_t count) {
    const std::string bytes = _bytes(file, offset, count * sizeof(Record));
    std::vector<Record> records(bytes.size() / sizeof(Record));
    if (!records.empty()) {
        std::memcpy(records.data(), bytes.data(), records.size() * sizeof(Record));
    }
    return records;
}

std::vector<Segment> _segments(const Descriptor& file) {
    const std::vector<ElfW(Ehdr)> headers = _records<ElfW(Ehdr)>(file, 0, 1);
    const unsigned char wordSize = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (headers.empty() || std::memcmp(headers[0].e_ident, ELFMAG, SELFMAG) != 0 ||
        headers[0].e_ident[EI_CLASS] != wordSize || headers[0].e_phentsize != sizeof(Segment)) {
        return {};
    }
    return _records<Segment>(file, headers[0].e_phoff, headers[0].e_phnum);
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

// Up to the one that says that it is the last.
std::vector<Entry> _dynamicEntries(const Descriptor& file, const std::vector<Segment>& segments) {
    std::vector<Entry> entries;
    for (const Segment& segment : segments) {
        if (segment.p_type == PT_DYNAMIC) {
            const std::size_t size = std::size_t(
                std::min<std::uint64_t>(segment.p_filesz, _mostEntries * sizeof(Entry)));
            entries = _records<Entry>(file, segment.p_offset, size / sizeof(Entry));
        }
    }
    entries.erase(std::find_if(entries.begin(), entries.end(),
                               [](const Entry& entry) { return entry.d_tag == DT_NULL; }),
                  entries.end());
    return entries;
}

}  // namespace

std::vector<std::string> neededLibraries(const std::string& file) {
    const Descriptor library(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    const std::vector<Segment> segments = _segments(library);
    const std::vector<Entry> entries = _dynamicEntries(library, segments);
    std::uint64_t names = 0;
    for (const Entry& entry : entries) {
        if (entry.d_tag == DT_STRTAB) {
            names = _fileOffset(segments, entry.d_un.d_ptr);
        }
    }
    std::vector<std::string> needed;
    for (const Entry& entry : entries) {
        if (entry.d_tag == DT_NEEDED && names != 0) {
            needed.emplace_back(_bytes(library, names + entry.d_un.d_val, _longestName).c_str());
        }
    }
    return needed;
}

}  // namespace QZ
