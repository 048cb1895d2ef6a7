// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MdArrays.h"

#include <algorithm>

#include "MachinePaths.h"
#include "SysFolder.h"

namespace QZ {

namespace {

constexpr const char* _memberPrefix = "dev-";

// Whether a list such as "in_sync,write_mostly" has the word.
bool _hasWord(const std::string& list, const std::string& word) {
    return (',' + list + ',').find(',' + word + ',') != std::string::npos;
}

// What a member does, from the attributes of its folder.
std::string _task(const std::string& folder) {
    const std::string state = readAttribute(folder, "state");
    const auto slot = readNumber(folder, "slot", 10);
    std::string member = slot ? "member " + std::to_string(*slot) : "member";
    if (_hasWord(state, "faulty"))
        return "faulty " + member;
    if (_hasWord(state, "journal"))
        return "journal";
    // One that has a place is filled with what its predecessor had.
    if (_hasWord(state, "spare"))
        return slot ? "rebuilding " + member : "spare";
    return member;
}

// The block device itself, or, of a partition, the one that it is on; empty for neither.
std::string _wholeOf(const std::string& block) {
    const std::string blocks = MachinePaths::blockDevices();
    if (hasEntry(blocks, block))
        return block;
    for (const std::string& whole : entriesOf(blocks)) {
        if (hasEntry(pathIn(blocks, whole), block))
            return whole;
    }
    return {};
}

}  // namespace

std::vector<MdMember> readMdMembers(const std::string& folder, const std::string& array) {
    std::string kind = readAttribute(folder, "level");
    // The members of a container are in arrays of their own, too.
    if (kind.empty())
        kind = "container";
    if (readNumber(folder, "degraded", 10).value_or(0) != 0)
        kind += ", degraded";
    const std::string prefix = _memberPrefix;
    const std::string ofArray = " of " + array + " (" + kind + ')';
    std::vector<MdMember> members;
    for (const std::string& entry : entriesOf(folder)) {
        if (entry.compare(0, prefix.size(), prefix) != 0)
            continue;
        std::string role = _task(pathIn(folder, entry));
        role += ofArray;
        members.push_back({entry.substr(prefix.size()), std::move(role)});
    }
    return members;
}

std::vector<MdMember> readMdMembers() {
    std::vector<MdMember> members;
    const std::string blocks = MachinePaths::blockDevices();
    for (const std::string& array : entriesOf(blocks)) {
        for (MdMember& member : readMdMembers(pathIn(pathIn(blocks, array), "md"), array))
            members.push_back(std::move(member));
    }
    return members;
}

std::vector<std::string> disksBelow(const std::string& block) {
    const std::string blocks = MachinePaths::blockDevices();
    std::vector<std::string> disks;
    // Also what is still to be looked at: each once, for a folder may be laid out as it likes.
    std::vector<std::string> met = {_wholeOf(block)};
    for (std::size_t i = 0; i < met.size(); ++i) {
        const std::string folder = pathIn(blocks, met[i]);
        if (met[i].empty())
            continue;
        if (hasEntry(folder, "device")) {
            disks.push_back(met[i]);
            continue;
        }
        for (const std::string& below : entriesOf(pathIn(folder, "slaves"))) {
            const std::string whole = _wholeOf(below);
            if (std::find(met.begin(), met.end(), whole) == met.end())
                met.push_back(whole);
        }
    }
    return disks;
}

}  // namespace QZ
