// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Schema.h"

#include "ModelFolder.h"
#include "MofParser.h"
#include "Text.h"

namespace QZ {

Schema Schema::load(const std::string& folder) {
    Schema schema;
    for (const std::string& file : modelFiles(folder)) {
        const MofDocument document = parseMofFile(file);
        schema.classes.add(document);
        schema.registration.add(document);
    }
    for (const std::string& file : innerModelFiles(folder, "interop")) {
        schema.interop.add(parseMofFile(file));
    }
    for (const std::string& file : innerModelFiles(folder, "subscriptions")) {
        const MofDocument document = parseMofFile(file);
        schema.classes.add(document);
        schema.interop.add(document);
    }
    return schema;
}

const ClassRepository* Schema::find(const std::string& nameSpace) const {
    if (sameName(nameSpace, MODEL_NAMESPACE)) {
        return &classes;
    }
    return sameName(nameSpace, INTEROP_NAMESPACE) ? &interop : nullptr;
}

}  // namespace QZ
