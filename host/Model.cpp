// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Model.h"

namespace QZ {

const Registration& Model::registration() const {
    if (_folder.empty()) {
        return _schema->registration;
    }
    std::call_once(_registrationRead,
                   [this] { _registration = Schema::loadRegistration(_folder); });
    return *_registration;
}

const Schema& Model::schema() const {
    if (!_folder.empty()) {
        std::call_once(_schemaRead, [this] { _schema = Schema::load(_folder); });
    }
    return *_schema;
}

}  // namespace QZ
