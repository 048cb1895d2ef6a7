// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "RegistrationReader.h"
#include "Schema.h"

namespace QZ {

// A model that may still lie in its folder, read no further than is asked for: who answers for a
// class stands in few and small files, and asking one provider takes no more. Any thread may ask;
// what it hands out is valid as long as the model.
class Model {
public:
    explicit Model(Schema schema) : _schema(std::move(schema)), _isWhole(true) {}
    // Nothing is read yet.
    explicit Model(const std::string& folder)
        : _folder(folder), _registration(std::make_unique<RegistrationReader>(folder)) {}

    // Throw as Schema::load does; the next call then tries again.
    const Schema& schema() const;
    // As Registration::instanceProvider(), by the schema once that is read.
    const ProviderEntry* instanceProvider(const std::string& nameSpace,
                                          const std::string& className) const;

private:
    std::string _folder;
    // Null where the schema was given.
    std::unique_ptr<RegistrationReader> _registration;
    mutable std::once_flag _schemaRead;
    mutable std::optional<Schema> _schema;
    mutable std::atomic<bool> _isWhole{false};  // the schema is there
};

}  // namespace QZ
