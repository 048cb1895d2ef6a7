// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>
#include <vector>

#include "CIMObjectPathRep.h"
#include "HostName.h"
#include "KeyNumber.h"

namespace Pegasus {

void throwMalformed(const String& text, const String& reason) {
    throw MalformedObjectNameException(text + ", reason: " + reason);
}

namespace {

// Goes through the text of one path from left to right.
class ObjectPathParser {
public:
    explicit ObjectPathParser(const String& text) : _text(text) {}

    CIMObjectPathRep parse() {
        CIMObjectPathRep path;
        _parseHost(path);
        _parseNamespace(path);
        _parseClass(path);
        while (!_atEnd())
            _parseKey(path.keys);
        sortKeys(path.keys);
        return path;
    }

private:
    static constexpr Uint32 _none = PEG_NOT_FOUND;

    bool _atEnd() const { return _at >= _text.size(); }
    Uint16 _peek() const { return _atEnd() ? Uint16(0) : Uint16(_text[_at]); }
    Uint32 _find(char c) const { return _text.find(_at, Char16(Uint16(c))); }

    [[noreturn]] void _fail(const String& reason) const { throwMalformed(_text, reason); }

    // What is before `end`, or all that is left where that was not found; goes on there.
    String _take(Uint32 end) {
        const Uint32 from = _at;
        _at = end == _none ? _text.size() : end;
        return _text.subString(from, _at - from);
    }

    void _parseHost(CIMObjectPathRep& path) {
        if (_text.size() < 2 || _text[0] != '/' || _text[1] != '/')
            return;
        _at = 2;
        const Uint32 slash = _find('/');
        if (slash == _none)
            _fail("no slash follows the host");
        path.host = _take(slash);
        if (!isHostName(path.host))
            _fail("the host name is not valid");
    }

    void _parseNamespace(CIMObjectPathRep& path) {
        const Uint32 colon = _find(':');
        // A colon behind the first dot belongs to the value of a key.
        if (colon == _none || _find('.') < colon) {
            if (path.host.size() > 0)
                _fail("there is a host but no namespace");
            return;
        }
        const String name = _take(colon);
        ++_at;
        if (!CIMNamespaceName::legal(name))
            _fail("the namespace name is not valid");
        path.nameSpace = name;
    }

    void _parseClass(CIMObjectPathRep& path) {
        const String name = _take(_find('.'));
        if (!CIMName::legal(name))
            _fail(String("the class name is not valid: ") + name);
        path.className = name;
        if (!_atEnd())
            ++_at;
    }

    void _parseKey(Array<CIMKeyBinding>& keys) {
        const Uint32 equals = _find('=');
        if (equals == _none)
            _fail("a key has no equal sign");
        const String name = _take(equals);
        if (!CIMName::legal(name))
            _fail(String("the key name is not valid: ") + name);
        ++_at;
        keys.append(_parseValue(name));
        if (!_atEnd() && _text[_at++] != ',')
            _fail("no comma follows the value of a key");
    }

    CIMKeyBinding _parseValue(const CIMName& name) {
        if (_peek() == '"') {
            return _toTextOrReference(name, _takeQuoted());
        }
        const String value = _take(_find(','));
        const Uint16 first = value.size() > 0 ? Uint16(value[0]) : Uint16(0);
        if (first == 't' || first == 'T' || first == 'f' || first == 'F')
            return CIMKeyBinding(name, _toBoolean(value), CIMKeyBinding::BOOLEAN);
        Uint64 natural = 0;
        Sint64 integer = 0;
        if (first == '-' ? !readSigned(value, integer) : !readUnsigned(value, natural))
            _fail(String("the value of a key is not valid: ") + value);
        return CIMKeyBinding(name, value, CIMKeyBinding::NUMERIC);
    }

    String _toBoolean(const String& value) const {
        if (String::equalNoCase(value, "TRUE"))
            return "TRUE";
        if (!String::equalNoCase(value, "FALSE"))
            _fail("the value of a key is neither TRUE nor FALSE");
        return "FALSE";
    }

    // Without the quotes, and without the backslashes before quotes and backslashes.
    String _takeQuoted() {
        String value;
        for (++_at; !_atEnd() && _peek() != '"'; ++_at) {
            if (_peek() == '\\') {
                ++_at;
                if (_peek() != '\\' && _peek() != '"')
                    _fail("a backslash in the value of a key escapes nothing");
            }
            value.append(_text[_at]);
        }
        if (_atEnd())
            _fail("the value of a key has no closing quote");
        ++_at;
        return value;
    }

    // The text form writes references as it writes strings: what is a path with keys is taken for
    // a reference. Every level of nesting doubles the backslashes, so this does not go deep.
    static CIMKeyBinding _toTextOrReference(const CIMName& name, const String& value) {
        if (value.find(Char16(Uint16('='))) != _none) {
            try {
                const CIMObjectPathRep path = parseObjectPath(value);
                if (path.keys.size() > 0)
                    return CIMKeyBinding(name, formatObjectPath(path), CIMKeyBinding::REFERENCE);
            } catch (const Exception&) {
                // No path: a string.
            }
        }
        return CIMKeyBinding(name, value, CIMKeyBinding::STRING);
    }

    const String& _text;
    Uint32 _at = 0;
};

void _appendKey(String& text, const CIMKeyBinding& key) {
    text.append(key.getName().getString()).append('=');
    const String& value = key.getValue();
    const bool isQuoted =
        key.getType() == CIMKeyBinding::STRING || key.getType() == CIMKeyBinding::REFERENCE;
    if (isQuoted)
        text.append('"');
    for (Uint32 i = 0; i < value.size(); ++i) {
        if (value[i] == '"' || value[i] == '\\')
            text.append('\\');
        text.append(value[i]);
    }
    if (isQuoted)
        text.append('"');
}

}  // namespace

void sortKeys(Array<CIMKeyBinding>& keys) {
    if (keys.size() < 2)
        return;
    std::vector<CIMKeyBinding> sorted(keys.getData(), keys.getData() + keys.size());
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& x, const auto& y) {
        return String::compareNoCase(x.getName().getString(), y.getName().getString()) < 0;
    });
    keys = Array<CIMKeyBinding>(sorted.data(), static_cast<Uint32>(sorted.size()));
}

CIMObjectPathRep parseObjectPath(const String& text) {
    return ObjectPathParser(text).parse();
}

String formatObjectPath(const CIMObjectPathRep& path) {
    String text;
    if (path.host.size() > 0)
        text.append("//").append(path.host).append('/');
    if (!path.nameSpace.isNull() || path.host.size() > 0)
        text.append(path.nameSpace.getString()).append(':');
    text.append(path.className.getString());
    for (Uint32 i = 0; i < path.keys.size(); ++i) {
        text.append(i == 0 ? '.' : ',');
        _appendKey(text, path.keys[i]);
    }
    return text;
}

}  // namespace Pegasus
