// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionFile.h"

#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "FileContent.h"
#include "FileLock.h"
#include "FileReplacement.h"
#include "MofParser.h"
#include "MofText.h"
#include "Product.h"
#include "ValueMaker.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr const char* HEADER = "// The subscriptions of this server; it replaces the file.\n";
constexpr std::string_view MARK = "#pragma namespace (\"";
constexpr std::string_view MARK_END = "\")\n";

// Whether every line is a comment or empty.
bool _isComment(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end != 0 && text.substr(0, 2) != "//") {
            return false;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

// Where the next entry begins, at or behind a place that begins a line.
std::size_t _nextEntry(std::string_view text, std::size_t at) {
    while (at < text.size() && text.substr(at, MARK.size()) != MARK) {
        at = std::min(text.find('\n', at), text.size() - 1) + 1;
    }
    return at;
}

CIMInstance _instance(const MofDocument& document, const ClassRepository& classes) {
    if (document.instances.size() != 1) {
        throw Error("one instance expected");
    }
    const MofInstance& read = document.instances.front();
    const ClassDeclaration* const declared = classes.find(read.className);
    if (!declared) {
        document.fail(read.position, "there is no class " + read.className);
    }
    CIMInstance instance(CIMName(make_String(declared->name)));
    for (const MofAssignment& assignment : read.properties) {
        const PropertyDeclaration* const property = declared->find(assignment.name);
        if (!property) {
            document.fail(assignment.position, "there is no property " + assignment.name);
        }
        const CIMName name(make_String(property->name));
        if (instance.findProperty(name) != PEG_NOT_FOUND) {
            document.fail(assignment.position, "there are two values of " + assignment.name);
        }
        instance.addProperty(CIMProperty(
            name, makeValue(document, assignment.value, property->type, property->isArray)));
    }
    return instance;
}

}  // namespace

std::vector<std::string> splitEntries(std::string_view text) {
    std::vector<std::string> entries;
    std::size_t begin = _nextEntry(text, 0);
    if (!_isComment(text.substr(0, begin))) {
        entries.emplace_back(text.substr(0, begin));
    }
    while (begin < text.size()) {
        const std::size_t end = _nextEntry(text, begin + MARK.size());
        entries.emplace_back(text.substr(begin, end - begin));
        begin = end;
    }
    return entries;
}

std::string entryText(const CIMInstance& instance) {
    std::string text(MARK);
    text.append(make_string(instance.getPath().getNameSpace().getString())).append(MARK_END);
    CIMInstance written = instance.clone();
    for (Uint32 i = written.getPropertyCount(); i != 0; --i) {
        if (written.getProperty(i - 1).getValue().isNull()) {
            written.removeProperty(i - 1);
        }
    }
    return text.append(mofInstance(written));
}

CIMInstance readEntry(const std::string& entry, const Schema& schema) {
    const std::size_t end = entry.find(MARK_END);
    if (entry.compare(0, MARK.size(), MARK) != 0 || end == std::string::npos || end < MARK.size()) {
        throw Error("a line such as #pragma namespace (\"root/interop\") expected");
    }
    const std::string space = entry.substr(MARK.size(), end - MARK.size());
    const ClassRepository* const classes = schema.find(space);
    if (!classes) {
        throw Error("there is no namespace " + space);
    }
    try {
        const MofDocument document =
            parseMof(std::string_view(entry).substr(end + MARK_END.size()), "entry");
        CIMInstance instance = _instance(document, *classes);
        instance.setPath(
            CIMObjectPath(String(), CIMNamespaceName(make_String(space)), instance.getClassName()));
        return instance;
    } catch (const Exception& exception) {
        throw Error(make_string(exception.getMessage()));
    }
}

std::string SubscriptionFile::_content() const {
    const FileContent content = readWholeFile(_path, LARGEST);
    switch (content.state) {
        case FileContent::Read:
            return content.text;
        case FileContent::Missing:
            return {};
        case FileContent::Unreadable:
            throwSystemError("Cannot read the subscriptions", _path, content.error);
        default:
            throw Error("Cannot read the subscriptions " + _path + ": it is no file of ours");
    }
}

std::vector<std::string> SubscriptionFile::read() {
    _text = _content();
    _isRead = true;
    return splitEntries(_text);
}

void SubscriptionFile::save(const std::vector<std::string>& entries) {
    std::string text = HEADER;
    for (const std::string& entry : entries) {
        text.append(entry);
        text.append(entry.empty() || entry.back() != '\n' ? "\n" : "");
    }
    std::string reason;
    if (!Product::makeDataDirectory(reason)) {
        throw Error(reason);
    }
    const FileLock lock(_path, FileLock::Exclusive);
    // Never over what could not be read.
    if (_content() != _text || !_isRead) {
        throw Error("Cannot save " + _path + ": another server has changed it; restart this one");
    }
    replaceFile(_path, text);
    _text = text;
}

}  // namespace QZ
