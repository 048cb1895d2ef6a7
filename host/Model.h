// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "Schema.h"

namespace QZ {

// A model that may still lie in its folder, read no further than is asked for: who answers for a
// class stands in few and small files, and asking one provider takes no more. Any thread may ask;
// what it hands out is valid as long as the model.
class Model {
public:
    explicit Model(Schema schema) : _schema(std::move(schema)) {}
    // Nothing is read yet.
    explicit Model(std::string folder) : _folder(std::move(folder)) {}

    // Throw as Schema::load does; the next call then tries again.
    const Registration& registration() const;
    const Schema& schema() const;

private:
    std::string _folder;  // empty: the schema was given
    mutable std::once_flag _registrationRead, _schemaRead;
    mutable std::optional<Registration> _registration;
    mutable std::optional<Schema> _schema;
};

}  // namespace QZ
