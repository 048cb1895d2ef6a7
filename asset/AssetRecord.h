// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <string>
#include <variant>

#include "AssetFile.h"
#include "DateTime.h"
#include "FieldCodec.h"

namespace QZ {

// One persisted field of a record: its key in "asset.dat" and the member that holds it.
template <class Record>
struct RecordField {
    const char* key;
    std::variant<std::string Record::*, unsigned char Record::*, unsigned int Record::*,
                 DateTime Record::*>
        member;
};

inline void ReadField(const PropertyFile& file, const char* key, std::string& value) {
    value = ReadStringFromFile(file, key);
}
inline void ReadField(const PropertyFile& file, const char* key, unsigned char& value) {
    value = ReadUint8FromFile(file, key);
}
inline void ReadField(const PropertyFile& file, const char* key, unsigned int& value) {
    value = ReadUint32FromFile(file, key);
}
inline void ReadField(const PropertyFile& file, const char* key, DateTime& value) {
    value = ReadDateFromFile(file, key);
}

inline void WriteField(PropertyFile& file, const char* key, const std::string& value) {
    WriteStringToFile(file, key, value);
}
inline void WriteField(PropertyFile& file, const char* key, unsigned char value) {
    WriteUint8ToFile(file, key, value);
}
inline void WriteField(PropertyFile& file, const char* key, unsigned int value) {
    WriteUint32ToFile(file, key, value);
}
inline void WriteField(PropertyFile& file, const char* key, const DateTime& value) {
    WriteDateToFile(file, key, value);
}

// Reads every field of the table, in its order.
template <class Record, std::size_t Count>
void ReadFields(const PropertyFile& file, const RecordField<Record> (&fields)[Count],
                Record& record) {
    for (const RecordField<Record>& field : fields) {
        std::visit([&](auto member) { ReadField(file, field.key, record.*member); }, field.member);
    }
}

// Writes every field of the table, changed or not, in its order.
template <class Record, std::size_t Count>
void WriteFields(PropertyFile& file, const RecordField<Record> (&fields)[Count],
                 const Record& record) {
    for (const RecordField<Record>& field : fields) {
        std::visit([&](auto member) { WriteField(file, field.key, record.*member); }, field.member);
    }
}

// What the asset records have in common: they load themselves when constructed and save every
// field when destroyed, so that of two alive at once the last one destroyed wins.
//
// A record is a local variable of one thread, never a member or a heap object: its destructor
// throws `Error` where saving fails, unless it runs because another exception is on its way,
// which is then the one to report.
class AssetRecord {
public:
    AssetRecord(const AssetRecord&) = delete;
    AssetRecord& operator=(const AssetRecord&) = delete;

protected:
    AssetRecord() : _path(AssetFilePath()), _exceptionsAtStart(std::uncaught_exceptions()) {}
    ~AssetRecord() = default;

    // Opens the file to read and runs `read(PropertyFile&)`.
    template <class Read>
    void load(Read read) {
        AssetFileSession session(_path, 1);
        read(session.file());
        session.close();
    }

    // Opens the file to read and write, runs `write(PropertyFile&)` and saves. Most records were
    // only read: for them it is found out first, by `write` too, that nothing is to be saved.
    template <class Write>
    void save(Write write) {
        try {
            AssetFileSession session(_path);
            if (session.file().openToCompare()) {
                write(session.file());
                if (!session.file().isChanged()) {
                    return;
                }
            }
            session.file().open(3);
            write(session.file());
            session.close();
        } catch (...) {
            if (std::uncaught_exceptions() <= _exceptionsAtStart) {
                throw;
            }
        }
    }

private:
    std::wstring _path;
    int _exceptionsAtStart;
};

}  // namespace QZ
