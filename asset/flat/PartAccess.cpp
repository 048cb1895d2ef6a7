// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <exception>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "ComputerSystemDetails.h"
#include "FlatCalls.h"
#include "PartInfoFactory.h"
#include "tavqz/AssetFlat.h"

using QZ::partinfos;

namespace {

// As AssetIDinit found the pairs, or as setters left them. Not locked.
QZ::ComputerSystemDetails::PersonalizedData personalizeddata;

void _getPartText(char* to, int index, void (QZ::PartInfo::*get)(std::string&) const) noexcept {
    if (!to) {
        return;
    }
    *to = '\0';
    if (index < 0 || std::size_t(index) >= partinfos.size()) {
        return;
    }
    try {
        std::string text;
        (partinfos[std::size_t(index)]->*get)(text);
        QZ::copyText(to, text);
    } catch (const std::exception&) {
        // No memory: empty it stays.
    }
}

template <class Member>
char* _getPersonalized(char* to, unsigned int index, Member member) noexcept {
    if (to) {
        *to = '\0';
        if (index < personalizeddata.size()) {
            QZ::copyText(to, personalizeddata[index].*member);
        }
    }
    return to;
}

template <class Member>
int _setPersonalized(const char* text, unsigned int index, Member member) noexcept {
    if (!text || index >= personalizeddata.size()) {
        return 0;
    }
    try {
        personalizeddata[index].*member = text;
    } catch (const std::exception&) {
        return 0;
    }
    QZ::withRecord<QZ::ComputerSystemDetails>(
        [](QZ::ComputerSystemDetails& record) { record.setPersonalizedData(personalizeddata); });
    return 0;
}

// Lets the parts go when the module is unloaded.
class PartsOwner {
public:
    PartsOwner() = default;
    ~PartsOwner() {
        QZ::PartInfoFactory::deleteList({partinfos.begin(), partinfos.end()});
        partinfos.clear();
    }
    PartsOwner(const PartsOwner&) = delete;
    PartsOwner& operator=(const PartsOwner&) = delete;
};

using Pair = QZ::ComputerSystemDetails::PersonalizedData::value_type;

}  // namespace

void AssetIDinit() {
    QZ::withRecord<QZ::ComputerSystemDetails>([](const QZ::ComputerSystemDetails& record) {
        QZ::ComputerSystemDetails::PersonalizedData pairs = record.getPersonalizedData();
        // Made here, it goes before the array, which was made when the module was loaded.
        static const PartsOwner owner;
        std::list<QZ::PartInfo*> parts = QZ::PartInfoFactory::newList();
        // Nothing fails from here on but for want of memory, and then the old ones stay.
        std::vector<QZ::PartInfo*> replaced(parts.begin(), parts.end());
        replaced.swap(partinfos);
        personalizeddata.swap(pairs);
        QZ::PartInfoFactory::deleteList({replaced.begin(), replaced.end()});
    });
}

int getPICount() {
    return int(partinfos.size());
}

#define PART_GETTER(field)                                    \
    void getPI##field(char* text, int index) {                \
        _getPartText(text, index, &QZ::PartInfo::get##field); \
    }
TAVQZ_PART_TEXTS(PART_GETTER)

char* getCSDetailsPersonalizedDataLabel(char* text, unsigned int index) {
    return _getPersonalized(text, index, &Pair::first);
}

int setCSDetailsPersonalizedDataLabel(const char* text, unsigned int index) {
    return _setPersonalized(text, index, &Pair::first);
}

char* getCSDetailsPersonalizedDataData(char* text, unsigned int index) {
    return _getPersonalized(text, index, &Pair::second);
}

int setCSDetailsPersonalizedDataData(const char* text, unsigned int index) {
    return _setPersonalized(text, index, &Pair::second);
}
