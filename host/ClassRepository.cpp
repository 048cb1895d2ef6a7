// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassRepository.h"

#include <algorithm>

#include "CimText.h"
#include "ClassBuilder.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr unsigned _lower(unsigned c) {
    return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
}

// As sameName, without making a text of each.
bool _hasName(const CIMQualifier& qualifier, const std::string& name) {
    const String& own = qualifier.getName().getString();
    const Char16* const units = own.getChar16Data();
    const Uint32 size = own.size();
    if (std::any_of(units, units + size, [](Char16 unit) { return unit >= 0x80; })) {
        return sameName(make_string(own), name);
    }
    if (size != name.size()) {
        return false;
    }
    for (Uint32 i = 0; i < size; ++i) {
        if (_lower(units[i]) != _lower(static_cast<unsigned char>(name[i]))) {
            return false;
        }
    }
    return true;
}

// The value of a qualifier, or nothing where it is not there, null or of another type.
template <class Value>
std::optional<Value> _valueOf(const CIMQualifier* qualifier, CIMType type, bool isArray) {
    if (!qualifier || qualifier->getType() != type || bool(qualifier->isArray()) != isArray ||
        qualifier->getValue().isNull()) {
        return std::nullopt;
    }
    Value value = Value();
    qualifier->getValue().get(value);
    return value;
}

}  // namespace

const CIMQualifier* QualifierList::find(const std::string& name) const {
    const auto found = std::find_if(_list.begin(), _list.end(), [&](const auto& qualifier) {
        return _hasName(qualifier, name);
    });
    return found == _list.end() ? nullptr : &*found;
}

bool QualifierList::isTrue(const char* name) const {
    return _valueOf<Boolean>(find(name), CIMTYPE_BOOLEAN, false).value_or(false);
}

std::string QualifierList::text(const char* name) const {
    return make_string(_valueOf<String>(find(name), CIMTYPE_STRING, false).value_or(String()));
}

std::string PropertyDeclaration::meaning(const std::string& code) const {
    const auto codes = _valueOf<Array<String>>(qualifiers.find("ValueMap"), CIMTYPE_STRING, true);
    const auto texts = _valueOf<Array<String>>(qualifiers.find("Values"), CIMTYPE_STRING, true);
    if (codes && texts) {
        for (Uint32 i = 0; i < codes->size() && i < texts->size(); ++i) {
            if (make_string((*codes)[i]) == code) {
                return make_string((*texts)[i]);
            }
        }
    }
    return {};
}

const PropertyDeclaration* ClassDeclaration::find(const std::string& property) const {
    const auto found =
        std::find_if(properties.begin(), properties.end(),
                     [&](const auto& declared) { return sameName(declared.name, property); });
    return found == properties.end() ? nullptr : &*found;
}

void ClassRepository::add(const MofDocument& document) {
    const ClassBuilder builder(*this, document);
    for (const MofQualifierDeclaration& declared : document.qualifiers) {
        _qualifiers.push_back(builder.makeQualifier(declared));
    }
    for (const MofClass& declared : document.classes) {
        add(builder.makeClass(declared));
    }
}

void ClassRepository::add(ClassDeclaration declared) {
    _superclasses.insert(declared.superclass);
    _classes.push_back(std::make_unique<const ClassDeclaration>(std::move(declared)));
    _index.emplace(_classes.back()->name, _classes.back().get());
}

const ClassDeclaration* ClassRepository::find(const std::string& name) const {
    const auto found = _index.find(name);
    return found == _index.end() ? nullptr : found->second;
}

const QualifierDeclaration* ClassRepository::findQualifier(const std::string& name) const {
    for (const QualifierDeclaration& declared : _qualifiers) {
        if (sameName(declared.name, name)) {
            return &declared;
        }
    }
    return nullptr;
}

std::vector<const ClassDeclaration*> ClassRepository::subclasses(const std::string& name,
                                                                 bool isDeep) const {
    std::vector<const ClassDeclaration*> result;
    if (_superclasses.count(name) == 0) {
        return result;
    }
    for (const auto& declared : _classes) {
        if (isDeep ? !sameName(declared->name, name) && isKindOf(*declared, name)
                   : sameName(declared->superclass, name)) {
            result.push_back(declared.get());
        }
    }
    return result;
}

bool ClassRepository::isKindOf(const ClassDeclaration& declared, const std::string& other) const {
    const ClassDeclaration* at = &declared;
    while (at && !sameName(at->name, other)) {
        if (at->superclass.empty()) {
            return other.empty();
        }
        at = find(at->superclass);
    }
    return at != nullptr;
}

}  // namespace QZ
