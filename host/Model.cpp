// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Model.h"

namespace QZ {

const Schema& Model::schema() const {
    if (_registration) {
        std::call_once(_schemaRead, [this] {
            _schema = Schema::load(_folder);
            _isWhole = true;
        });
    }
    return *_schema;
}

const ProviderEntry* Model::instanceProvider(const std::string& nameSpace,
                                             const std::string& className) const {
    return _isWhole ? _schema->registration.instanceProvider(nameSpace, className)
                    : _registration->instanceProvider(nameSpace, className);
}

}  // namespace QZ
