// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMObjectPath.h>

#include <unistd.h>

#include <climits>
#include <utility>

#include "CIMObjectPathRep.h"
#include "HostName.h"
#include "KeyNumber.h"

namespace Pegasus {

template class Array<CIMObjectPath>;

using RepPtr = std::shared_ptr<const CIMObjectPathRep>;

static const RepPtr& _emptyRep() {
    static const RepPtr rep = std::make_shared<CIMObjectPathRep>();
    return rep;
}

// What a caller gives as keys, in the order and the form in which a path keeps them. Throws
// MalformedObjectNameException if a reference among them is no path.
static Array<CIMKeyBinding> _arrange(Array<CIMKeyBinding> keys) {
    for (Uint32 i = 0; i < keys.size(); ++i) {
        // The keys of a path that is a key are sorted too.
        if (std::as_const(keys)[i].getType() == CIMKeyBinding::REFERENCE)
            keys[i].setValue(CIMObjectPath(keys[i].getValue()).toString());
    }
    sortKeys(keys);
    return keys;
}

static void _requireHost(const String& host) {
    if (host.size() > 0 && !isHostName(host))
        throwMalformed(host, "the host name is not valid");
}

static String _localHostName() {
    char name[HOST_NAME_MAX + 1] = "";
    return gethostname(name, sizeof name) == 0 ? String(name) : String();
}

CIMObjectPath::CIMObjectPath() : _rep(_emptyRep()) {}

CIMObjectPath::CIMObjectPath(const String& objectName)
    : _rep(std::make_shared<CIMObjectPathRep>(parseObjectPath(objectName))) {}

CIMObjectPath::CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace,
                             const CIMName& className, const Array<CIMKeyBinding>& keyBindings) {
    set(host, nameSpace, className, keyBindings);
}

CIMObjectPath::CIMObjectPath(const CIMObjectPath& x) = default;
CIMObjectPath& CIMObjectPath::operator=(const CIMObjectPath& x) = default;
CIMObjectPath::~CIMObjectPath() = default;

void CIMObjectPath::clear() {
    _rep = _emptyRep();
}

void CIMObjectPath::set(const String& host, const CIMNamespaceName& nameSpace,
                        const CIMName& className, const Array<CIMKeyBinding>& keyBindings) {
    _requireHost(host);
    auto rep = std::make_shared<CIMObjectPathRep>();
    rep->host = host;
    rep->nameSpace = nameSpace;
    rep->className = className;
    rep->keys = _arrange(keyBindings);
    _rep = std::move(rep);
}

void CIMObjectPath::set(const String& objectName) {
    _rep = std::make_shared<CIMObjectPathRep>(parseObjectPath(objectName));
}

CIMObjectPath& CIMObjectPath::operator=(const String& objectName) {
    set(objectName);
    return *this;
}

const String& CIMObjectPath::getHost() const {
    return _rep->host;
}

void CIMObjectPath::setHost(const String& host) {
    if (host != _localHostName())
        _requireHost(host);
    auto rep = std::make_shared<CIMObjectPathRep>(*_rep);
    rep->host = host;
    _rep = std::move(rep);
}

const CIMNamespaceName& CIMObjectPath::getNameSpace() const {
    return _rep->nameSpace;
}

void CIMObjectPath::setNameSpace(const CIMNamespaceName& nameSpace) {
    auto rep = std::make_shared<CIMObjectPathRep>(*_rep);
    rep->nameSpace = nameSpace;
    _rep = std::move(rep);
}

const CIMName& CIMObjectPath::getClassName() const {
    return _rep->className;
}

void CIMObjectPath::setClassName(const CIMName& className) {
    auto rep = std::make_shared<CIMObjectPathRep>(*_rep);
    rep->className = className;
    _rep = std::move(rep);
}

const Array<CIMKeyBinding>& CIMObjectPath::getKeyBindings() const {
    return _rep->keys;
}

void CIMObjectPath::setKeyBindings(const Array<CIMKeyBinding>& keyBindings) {
    auto rep = std::make_shared<CIMObjectPathRep>(*_rep);
    rep->keys = _arrange(keyBindings);
    _rep = std::move(rep);
}

String CIMObjectPath::toString() const {
    return formatObjectPath(*_rep);
}

Boolean CIMObjectPath::identical(const CIMObjectPath& x) const {
    if (_rep == x._rep)
        return true;
    const Array<CIMKeyBinding>& keys = _rep->keys;
    const Array<CIMKeyBinding>& others = x._rep->keys;
    if (!String::equalNoCase(_rep->host, x._rep->host) || _rep->nameSpace != x._rep->nameSpace ||
        _rep->className != x._rep->className || keys.size() != others.size())
        return false;
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (!(keys[i] == others[i]))
            return false;
    }
    return true;
}

// FNV-1a, with two's 32 bits.
static Uint32 _hash(Uint32 hash, const String& text, bool ignoreCase) {
    for (Uint32 i = 0; i < text.size(); ++i) {
        Uint32 c = Uint16(text[i]);
        if (ignoreCase && c >= 'A' && c <= 'Z')
            c += 'a' - 'A';
        hash = (hash ^ c) * 16777619U;
    }
    return (hash ^ 0xffU) * 16777619U;
}

// Of what operator== compares, so that equal keys hash alike.
static Uint32 _hashKey(Uint32 hash, const CIMKeyBinding& key) {
    hash = _hash(hash, key.getName().getString(), true);
    Uint64 natural = 0;
    Sint64 integer = 0;
    switch (key.getType()) {
        case CIMKeyBinding::REFERENCE:
            try {
                return hash * 31 + CIMObjectPath(key.getValue()).makeHashCode();
            } catch (const Exception&) {
                return _hash(hash, key.getValue(), false);
            }
        case CIMKeyBinding::NUMERIC:
            if (readSigned(key.getValue(), integer))
                natural = static_cast<Uint64>(integer);
            else if (!readUnsigned(key.getValue(), natural))
                return _hash(hash, key.getValue(), false);
            return hash * 31 + static_cast<Uint32>(natural ^ natural >> 32);
        default:
            return _hash(hash, key.getValue(), key.getType() == CIMKeyBinding::BOOLEAN);
    }
}

Uint32 CIMObjectPath::makeHashCode() const {
    Uint32 hash = _hash(2166136261U, _rep->host, true);
    hash = _hash(hash, _rep->nameSpace.getString(), true);
    hash = _hash(hash, _rep->className.getString(), true);
    for (Uint32 i = 0; i < _rep->keys.size(); ++i)
        hash = _hashKey(hash, _rep->keys[i]);
    return hash;
}

Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y) {
    return x.identical(y);
}

Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y) {
    return !x.identical(y);
}

}  // namespace Pegasus
