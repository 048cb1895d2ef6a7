// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <string>

#include "ComputerSystemDetails.h"
#include "FlatCalls.h"
#include "Lease.h"
#include "Product.h"
#include "Text.h"
#include "Warranty.h"
#include "tavqz/AssetFlat.h"

namespace {

using QZ::Lease;
using QZ::Warranty;

// The record under the name that its functions have, with the fields that they call otherwise.
class CSDetails : public QZ::ComputerSystemDetails {
public:
    std::string getSystemuuid() const { return getSystemUuid(); }
    std::string getSystemName() const {
        return QZ::make_string(ComputerSystemDetails::getSystemName());
    }
    std::string getVersion() const { return QZ::make_string(QZ::Product::getVersion()); }
};

template <class Record, class Get>
void _getText(char* to, Get get) noexcept {
    if (!to) {
        return;
    }
    *to = '\0';
    // Copied before the record is saved: that may fail where reading did not.
    QZ::withRecord<Record>([&](const Record& record) { QZ::copyText(to, get(record)); });
}

template <class Record, class Get>
unsigned int _getNumber(Get get) noexcept {
    unsigned int value = 0;
    QZ::withRecord<Record>([&](const Record& record) { value = get(record); });
    return value;
}

}  // namespace

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are names of functions and classes
#define TEXT_GETTER(record, field)                                                    \
    void get##record##field(char* text) {                                             \
        _getText<record>(text, [](const record& from) { return from.get##field(); }); \
    }
#define TEXT_SETTER(record, field)                                            \
    int set##record##field(const char* text) {                                \
        if (text) {                                                           \
            QZ::withRecord<record>([&](record& to) { to.set##field(text); }); \
        }                                                                     \
        return 0;                                                             \
    }
#define DATE_GETTER(record, field)                                                            \
    void get##record##field(char* text) {                                                     \
        _getText<record>(text,                                                                \
                         [](const record& from) { return QZ::flatDate(from.get##field()); }); \
    }
#define DATE_SETTER(record, field)                                                             \
    int set##record##field(const char* text) {                                                 \
        if (text) {                                                                            \
            QZ::withRecord<record>([&](record& to) { to.set##field(QZ::DateTime(text, 3)); }); \
        }                                                                                      \
        return 0;                                                                              \
    }
#define NUMBER_GETTER(record, field)                                                     \
    unsigned int get##record##field() {                                                  \
        return _getNumber<record>([](const record& from) { return from.get##field(); }); \
    }
#define NUMBER_SETTER(type, record, field)                                 \
    int set##record##field(type value) {                                   \
        QZ::withRecord<record>([&](record& to) { to.set##field(value); }); \
        return 0;                                                          \
    }
#define BYTE_SETTER(record, field) NUMBER_SETTER(unsigned char, record, field)
#define WORD_SETTER(record, field) NUMBER_SETTER(unsigned int, record, field)

TAVQZ_ASSET_TEXTS(TEXT_GETTER)
TAVQZ_ASSET_TEXTS(TEXT_SETTER)
TAVQZ_ASSET_TEXTS_READ_ONLY(TEXT_GETTER)
TAVQZ_ASSET_DATES(DATE_GETTER)
TAVQZ_ASSET_DATES(DATE_SETTER)
TAVQZ_ASSET_BYTES(NUMBER_GETTER)
TAVQZ_ASSET_BYTES(BYTE_SETTER)
TAVQZ_ASSET_NUMBERS(NUMBER_GETTER)
TAVQZ_ASSET_NUMBERS(WORD_SETTER)
TAVQZ_ASSET_NUMBERS_READ_ONLY(NUMBER_GETTER)
// NOLINTEND(bugprone-macro-parentheses)
