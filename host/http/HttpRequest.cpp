// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpRequest.h"

#include "Text.h"

namespace QZ {

const std::string* HttpRequest::header(std::string_view name) const {
    for (const auto& [key, value] : headers) {
        if (sameName(key, name)) {
            return &value;
        }
    }
    return nullptr;
}

}  // namespace QZ
