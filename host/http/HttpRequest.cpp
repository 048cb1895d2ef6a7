// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpRequest.h"

#include <algorithm>

namespace QZ {

namespace {

char _lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

}  // namespace

bool sameHeader(const std::string& left, const std::string& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return _lower(one) == _lower(other); });
}

const std::string* HttpRequest::header(const std::string& name) const {
    for (const auto& [key, value] : headers) {
        if (sameHeader(key, name)) {
            return &value;
        }
    }
    return nullptr;
}

}  // namespace QZ
