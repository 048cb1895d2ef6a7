// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cRegistry.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "FileContent.h"
#include "FileReplacement.h"
#include "RegistryText.h"
#include "tavqz/AccessHelpers.h"

namespace {

constexpr std::size_t MAX_FILE = std::size_t(16) << 20;
constexpr std::string_view TEXT_DATA = "string&";
constexpr std::string_view NUMBER_DATA = "dword:";
constexpr std::size_t NUMBER_DIGITS = 8;

bool _isData(std::string_view data) {
    const std::string lower = QZ::lowerCased(data);
    if (lower.rfind(TEXT_DATA, 0) == 0) {
        // One "&" more, at the end.
        return lower.size() > TEXT_DATA.size() &&
               lower.find('&', TEXT_DATA.size()) == lower.size() - 1;
    }
    if (lower.rfind(NUMBER_DATA, 0) != 0) {
        return false;
    }
    const std::string digits = lower.substr(NUMBER_DATA.size());
    return !digits.empty() && digits.size() <= NUMBER_DIGITS &&
           digits.find_first_not_of("0123456789abcdef") == digits.npos;
}

// As the file's layout has it: a number with all its digits.
std::string _fullData(std::string data) {
    const std::size_t digits = data.size() - NUMBER_DATA.size();
    if (QZ::lowerCased(data).rfind(NUMBER_DATA, 0) == 0 && digits < NUMBER_DIGITS) {
        data.insert(NUMBER_DATA.size(), NUMBER_DIGITS - digits, '0');
    }
    return data;
}

// Whether a text can stand in a line without being taken for something else.
bool _fits(std::string_view text, const char* forbidden) {
    return !text.empty() && text.find_first_of(forbidden) == text.npos &&
           text.find_first_of("\r\n") == text.npos &&
           QZ::lowerCased(text).find("[hkey_local_machine") == std::string::npos;
}

// Nothing may be thrown at those who call: what runs out of memory has failed.
template <class Result, class Operation>
Result _guarded(Result failed, Operation operation) {
    try {
        return operation();
    } catch (const std::exception&) {
        return failed;
    }
}

}  // namespace

struct cRegistry::Content {
    QZ::RegistryText text;
    bool isChanged = false;
};

cRegistry::cRegistry(char* fileName) {
    _guarded(0, [&] {
        if (fileName) {
            QZ::FileContent file = QZ::readWholeFile(fileName, MAX_FILE);
            _fileName = fileName;
            if (file.state == QZ::FileContent::Read) {
                _content =
                    std::make_unique<Content>(Content{QZ::RegistryText(std::move(file.text))});
            }
        }
        return 0;
    });
}

cRegistry::~cRegistry() = default;

bool cRegistry::_check(const char* argument, const char* prefix) const {
    if (!argument) {
        return false;
    }
    std::printf("\nCheckRegTree called and regkey is [%s]\n", argument);
    if (!_content) {
        std::printf("\nCheckRegTree called and regkey is NULL");
        return false;
    }
    return _guarded(false, [&] {
        const std::string wanted = prefix + QZ::lowerCased(argument);
        std::printf("\nThe configBuffer != NULL and the checkkey is [%s]\n", wanted.c_str());
        return _content->text.contains(wanted);
    });
}

bool cRegistry::CheckRegTree(char* key) {
    // Without the closing bracket, so that a key also finds those that it begins.
    return _check(key, "[hkey_local_machine\\");
}

bool cRegistry::CheckRegTreeLineItem(char* item) {
    return _check(item, "");
}

int cRegistry::GetRegInfo(char* key, char* valueName, unsigned long* number, unsigned char* text) {
    if (number) {
        *number = 0;
    }
    if (!_content || !key || !valueName) {
        return 0;
    }
    return _guarded(0, [&] {
        const QZ::RegistryValue value = _content->text.find(key, valueName);
        if (value.kind == QZ::RegistryValue::Number && number) {
            *number = value.number;
        }
        if (value.kind == QZ::RegistryValue::Text && text) {
            std::copy_n(value.text.data(), std::min(value.text.size(), MAX_TEXT), text);
        }
        return value.kind == QZ::RegistryValue::None ? 0 : 1;
    });
}

int cRegistry::UpdateRegInfo(char* key, char* valueName, char* data) {
    if (!_content || !key || !valueName || !data) {
        return 0;
    }
    return _guarded(0, [&] {
        if (!_fits(key, "]") || !_fits(valueName, "=&") || !_fits(data, "") || !_isData(data) ||
            QZ::bareName(valueName).empty()) {
            return 0;
        }
        _content->text.set(key, valueName, _fullData(data));
        _content->isChanged = true;
        return 1;
    });
}

int cRegistry::WriteRegInfo(char* key, char* entry) {
    const char* const sign = entry ? std::strchr(entry, '=') : nullptr;
    if (!sign) {
        return 0;
    }
    return _guarded(0, [&] {
        std::string name(static_cast<const char*>(entry), sign);
        std::string data(sign + 1);
        return UpdateRegInfo(key, name.data(), data.data());
    });
}

int cRegistry::UpdateRegData() {
    if (!_content) {
        return 0;
    }
    return _guarded(0, [&] {
        if (_content->isChanged) {
            QZ::replaceFile(_fileName, _content->text.text());
            _content->isChanged = false;
        }
        return 1;
    });
}

int cRegistry::CloseRegData() {
    const int result = UpdateRegData();
    _content.reset();
    return result;
}

int cRegistry::_httoi(char const* text, int length) {
    return ::_httoi(text, length);
}
