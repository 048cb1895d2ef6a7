// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimObjectFile.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "CimText.h"
#include "ObjectText.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr std::string_view _lastLine = "};";
constexpr std::string_view _byteOrderMark = "\xEF\xBB\xBF";

CIMObjectPath _identity(const CIMObjectPath& path) {
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
}

[[noreturn]] void _refuse(CIMStatusCode status, const CIMObjectPath& path, const char* why) {
    throw CIMException(status, _identity(path).toString() + String(why));
}

bool _hasValue(const CIMInstance& instance, const CIMName& name) {
    const Uint32 index = instance.findProperty(name);
    return index != PEG_NOT_FOUND && !instance.getProperty(index).getValue().isNull();
}

// The names of the path's keys for which there is no value, with commas between.
String _missingKeys(const CIMInstance& instance) {
    String missing;
    const Array<CIMKeyBinding>& keys = instance.getPath().getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (_hasValue(instance, keys[i].getName()))
            continue;
        missing.append(missing.size() == 0 ? String() : String(", "));
        missing.append(keys[i].getName().getString());
    }
    return keys.size() == 0 ? String("any key") : missing;
}

void _requireKeys(const CIMInstance& instance) {
    const String missing = _missingKeys(instance);
    if (missing.size() != 0) {
        throw CIMException(CIM_ERR_INVALID_PARAMETER, instance.getClassName().getString() +
                                                          String(" has no value for ") + missing);
    }
}

// The next line with its end, which is taken from the text.
std::string_view _takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    return line;
}

std::string_view _withoutEnd(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t\r\n");
    return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// Whether a line means nothing to us.
bool _isRemark(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ||
           (line.substr(first, 2) == "//" && line.find('\0') == std::string_view::npos);
}

std::string _withoutRemarks(std::string_view lines) {
    std::string text;
    while (!lines.empty()) {
        const std::string_view line = _takeLine(lines);
        text.append(_isRemark(line) ? std::string_view() : line);
    }
    return text;
}

// Where somebody changed a text that is a key and left the path as it was, the property is what he
// looked at.
void _takeKeysOfProperties(CIMInstance& instance) {
    CIMObjectPath path = instance.getPath();
    Array<CIMKeyBinding> keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        const CIMValue value =
            instance.getProperty(instance.findProperty(keys[i].getName())).getValue();
        if (keys[i].getType() == CIMKeyBinding::STRING && value.getType() == CIMTYPE_STRING &&
            !value.isArray()) {
            // Not by toString(), which not every CIM library lets pass a NUL.
            String text;
            if (!value.isNull())
                value.get(text);
            keys[i].setValue(text);
        }
    }
    path.setKeyBindings(keys);
    instance.setPath(path);
}

// The same for paths that name the same instance.
std::set<std::string> _identityTexts(const CIMObjectPath& path) {
    const auto lower = [](String name) {
        name.toLower();
        return make_string(name);
    };
    std::set<std::string> texts{lower(path.getClassName().getString())};
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i)
        texts.insert(lower(keys[i].getName().getString()) + '=' + make_string(keys[i].getValue()));
    return texts;
}

// An editor may have left out the end of the last line.
std::string _whole(std::string lines) {
    if (!lines.empty() && lines.back() != '\n')
        lines += '\n';
    return lines;
}

}  // namespace

std::vector<CIMInstance> CimObjectFile::enumerateInstances(const CIMObjectPath& classPath) const {
    _requireReader();
    std::vector<CIMInstance> found;
    for (const Entry& entry : _entries) {
        if (entry.instance.getClassName() == classPath.getClassName())
            found.push_back(entry.instance);
    }
    return found;
}

void CimObjectFile::createInstance(const CIMInstance& instance) {
    _requireWriter();
    _requireKeys(instance);
    if (_find(instance.getPath()) != _entries.end())
        _refuse(CIM_ERR_ALREADY_EXISTS, instance.getPath(), " exists already");
    std::string comment = std::exchange(_end, std::string());
    _entries.push_back({std::move(comment), composeInstance(instance), instance.clone()});
    _setChanged();
}

void CimObjectFile::modifyInstance(const CIMInstance& instance) {
    _requireWriter();
    _requireKeys(instance);
    const auto entry = _find(instance.getPath());
    if (entry == _entries.end())
        _refuse(CIM_ERR_NOT_FOUND, instance.getPath(), " is not stored");
    entry->text = composeInstance(instance);
    entry->instance = instance.clone();
    _setChanged();
}

void CimObjectFile::deleteInstance(const CIMObjectPath& path) {
    _requireWriter();
    const auto entry = _find(path);
    if (entry == _entries.end())
        _refuse(CIM_ERR_NOT_FOUND, path, " is not stored");
    _entries.erase(entry);
    _setChanged();
}

std::vector<CimObjectFile::Entry>::iterator CimObjectFile::_find(const CIMObjectPath& path) {
    const CIMObjectPath wanted = _identity(path);
    return std::find_if(_entries.begin(), _entries.end(), [&](const Entry& entry) {
        return _identity(entry.instance.getPath()) == wanted;
    });
}

// An instance begins and ends at the margin, and nothing inside does, so that one that is torn ends
// where the next one begins.
bool CimObjectFile::_load(const std::string& text) {
    _forget();
    bool isSound = true;
    Identities known;
    std::string_view rest = text;
    const bool isMarked = rest.substr(0, _byteOrderMark.size()) == _byteOrderMark;
    // What stands outside of instances, or at the margin between the lines of one: there it is the
    // next one's, should this one be torn.
    std::string remarks(rest.substr(0, isMarked ? _byteOrderMark.size() : 0));
    rest.remove_prefix(remarks.size());
    std::string comment;
    std::optional<std::string> open;
    while (!rest.empty()) {
        const std::string_view line = _takeLine(rest);
        const bool isInside = open && (line.front() == ' ' || line.front() == '\t');
        const bool isLast = open && _withoutEnd(line) == _lastLine;
        if (isInside || isLast) {
            open->append(std::exchange(remarks, {})).append(line);
            if (isLast)
                isSound = _addEntry(std::exchange(comment, {}), *std::exchange(open, {}), known) &&
                          isSound;
        } else if (line.substr(0, 8) == "instance") {
            isSound = isSound && !open;
            comment += std::exchange(remarks, {});
            open = line;
        } else if (_isRemark(line)) {
            remarks.append(line);
        } else {
            isSound = false;
            open.reset();
        }
    }
    _end = _whole(comment + remarks);
    return isSound && !open;
}

bool CimObjectFile::_addEntry(std::string comment, std::string text, Identities& known) {
    std::optional<CIMInstance> instance = parseInstance(_withoutRemarks(text));
    if (!instance || _missingKeys(*instance).size() != 0)
        return false;
    _takeKeysOfProperties(*instance);
    // A second one could neither be changed nor deleted.
    if (!known.insert(_identityTexts(instance->getPath())).second)
        return false;
    _entries.push_back({std::move(comment), _whole(std::move(text)), *instance});
    return true;
}

std::string CimObjectFile::_compose() const {
    std::string text;
    for (const Entry& entry : _entries) {
        text += entry.comment;
        text += entry.text;
    }
    return text + _end;
}

void CimObjectFile::_forget() {
    _entries.clear();
    _end.clear();
}

}  // namespace QZ
