// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMName.h>

namespace Pegasus {

namespace {

constexpr bool _isDigit(Uint16 unit) {
    return unit >= '0' && unit <= '9';
}

// IDENTIFIER of DSP0004, annex A; a digit may not come first.
constexpr bool _isNameUnit(Uint16 unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || unit == '_' ||
           _isDigit(unit) || (unit >= 0x0080 && unit <= 0xffef);
}

bool _isName(const Char16* units, Uint32 size) {
    if (size == 0 || _isDigit(units[0]))
        return false;
    for (Uint32 i = 0; i < size; ++i) {
        if (!_isNameUnit(units[i]))
            return false;
    }
    return true;
}

const String& _checkedName(const String& name) {
    if (!CIMName::legal(name))
        throw InvalidNameException(name);
    return name;
}

String _checkedNamespace(const String& name) {
    if (!CIMNamespaceName::legal(name))
        throw InvalidNamespaceNameException(name);
    return name[0] == '/' ? name.subString(1) : name;
}

}  // namespace

CIMName::CIMName(const String& name) : _name(_checkedName(name)) {}

CIMName::CIMName(const char* name) : CIMName(String(name)) {}

CIMName& CIMName::operator=(const String& name) {
    _name = _checkedName(name);
    return *this;
}

Boolean CIMName::legal(const String& name) {
    return _isName(name.getChar16Data(), name.size());
}

CIMNamespaceName::CIMNamespaceName(const String& name) : _name(_checkedNamespace(name)) {}

CIMNamespaceName::CIMNamespaceName(const char* name) : CIMNamespaceName(String(name)) {}

CIMNamespaceName& CIMNamespaceName::operator=(const String& name) {
    _name = _checkedNamespace(name);
    return *this;
}

Boolean CIMNamespaceName::legal(const String& name) {
    const Char16* const units = name.getChar16Data();
    Uint32 begin = name.size() > 0 && units[0] == '/' ? 1 : 0;
    for (Uint32 end = begin; end < name.size(); ++end) {
        if (units[end] != '/')
            continue;
        if (!_isName(units + begin, end - begin))
            return false;
        begin = end + 1;
    }
    return _isName(units + begin, name.size() - begin);
}

template class Array<CIMName>;
template class Array<CIMNamespaceName>;

}  // namespace Pegasus
