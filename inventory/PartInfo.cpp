// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PartInfo.h"

#include <algorithm>
#include <utility>

#include "Text.h"

namespace QZ {
namespace {

bool _isControl(char character) {
    return character >= 1 && character <= 31;
}

bool _isClean(const std::string& text) {
    return plainEnd(text.data(), text.data() + text.size()) == text.data() + text.size() &&
           (text.empty() || (text.front() != ' ' && text.back() != ' '));
}

std::string _clean(std::string text) {
    if (_isClean(text)) {
        return text;  // as most are
    }
    text.erase(std::remove_if(text.begin(), text.end(), _isControl), text.end());
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

}  // namespace

PartInfo::PartInfo(std::string manufacturer, std::string model, std::string serial, std::string tag,
                   std::string version)
    : _manufacturer(_clean(std::move(manufacturer))),
      _model(_clean(std::move(model))),
      _serialNumber(_clean(std::move(serial))),
      _tag(_clean(std::move(tag))),
      _version(_clean(std::move(version))) {}

}  // namespace QZ
