// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RegistrationReader.h"

#include <strings.h>

#include <string_view>

#include "ModelFolder.h"
#include "MofParser.h"

namespace QZ {

namespace {

// Whether a text names a class of the registration. Its underscore is quicker to find than a name
// whose case does not matter.
bool _namesRegistration(const std::string& text) {
    constexpr std::string_view name = "PG_Provider";
    constexpr std::size_t underscore = name.find('_');
    for (std::size_t at = text.find('_', underscore); at != std::string::npos;
         at = text.find('_', at + 1)) {
        if (strncasecmp(text.c_str() + at - underscore, name.data(), name.size()) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

const ProviderEntry* RegistrationReader::instanceProvider(const std::string& nameSpace,
                                                          const std::string& className) {
    const std::lock_guard<std::mutex> lock(_mutex);
    do {
        if (const ProviderEntry* const found =
                _registration.instanceProvider(nameSpace, className)) {
            return found;
        }
    } while (_readMore());
    return nullptr;
}

bool RegistrationReader::_readMore() {
    if (!_files) {
        const std::vector<std::string> files = modelFiles(_folder);
        _files.emplace(files.rbegin(), files.rend());
    }
    if (_failure) {
        std::rethrow_exception(_failure);
    }
    try {
        while (!_cursor || _cursor->atEnd()) {
            if (_cursor) {
                _cursor.reset();
                _files->pop_back();
            }
            if (!_open()) {
                return false;
            }
        }
        _readDeclaration();
        return true;
    } catch (...) {
        _failure = std::current_exception();
        throw;
    }
}

bool RegistrationReader::_open() {
    for (; !_files->empty(); _files->pop_back()) {
        _text = readMofFile(_files->back());
        if (_namesRegistration(_text)) {
            _cursor.emplace(_text, _files->back());
            return true;
        }
    }
    return false;
}

void RegistrationReader::_readDeclaration() {
    MofDocument document;
    document.file = _files->back();
    takeMofDeclaration(*_cursor, document);
    _registration.add(document);
}

}  // namespace QZ
