// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruCommand.h"

#include <Pegasus/Common/Exception.h>

#include <optional>

#include "Assignment.h"
#include "CimObjectFile.h"
#include "CimText.h"
#include "Error.h"
#include "File.h"
#include "FileContent.h"
#include "FruImport.h"
#include "Instances.h"
#include "Output.h"
#include "Product.h"
#include "TerminalText.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr std::size_t _largestImport = std::size_t{64} * 1024 * 1024;

const char* const _className = "TAVIRA_FRU";
const wchar_t* const _storeName = L"fru.dat";

CIMObjectPath _classPath() {
    return CIMObjectPath(String(), MODEL_NAMESPACE, CIMName(_className));
}

const ClassDeclaration& _declaration(Operations& server) {
    const ClassDeclaration* declared = server.schema().classes.find(_className);
    if (!declared) {
        throw CIMException(CIM_ERR_INVALID_CLASS, _className);
    }
    return *declared;
}

std::string _textOf(const CIMInstance& unit, const char* name) {
    const Uint32 index = unit.findProperty(name);
    return index == PEG_NOT_FOUND ? std::string() : plainText(unit.getProperty(index).getValue());
}

bool _isRecorded(const CIMInstance& unit) {
    return _textOf(unit, "ElementName") == "GETFRU";
}

// Throws Error where the store cannot be read: its provider then answers with what else the machine
// has, as if nothing were recorded. That of another server is not ours to look at.
void _requireStore(const Request& request) {
    if (request.server.empty()) {
        CimObjectFile(Product::getDataDirectory() + _storeName).open(ReadMode);
    }
}

std::vector<CIMInstance> _recorded(const Request& request, Operations& server) {
    _requireStore(request);
    std::vector<CIMInstance> recorded;
    for (const CIMInstance& unit : server.enumerateInstances(_classPath())) {
        if (_isRecorded(unit)) {
            recorded.push_back(unit);
        }
    }
    return recorded;
}

CommandResult _list(const Request& request, Operations& server, const Notes& note) {
    CommandResult result;
    try {
        _requireStore(request);
    } catch (const Error& error) {
        note(error.what());
        result.status = EXIT_FAILED;
    }
    std::vector<CIMInstance> units;
    for (const CIMInstance& found : server.enumerateInstances(_classPath())) {
        CIMInstance unit = found.clone();
        unit.addProperty(CIMProperty(CIMName("Recorded"), CIMValue(Boolean(_isRecorded(unit)))));
        units.push_back(unit);
    }
    result.text = makeOutput(request.format)->instances(units);
    return result;
}

// The path of a unit that a name is; nothing where it is none, as FRU numbers are.
std::optional<CIMObjectPath> _asPath(const std::string& name) {
    try {
        CIMObjectPath path(make_String(name));
        const bool isUnit = path.getClassName() == CIMName(_className);
        if (isUnit && path.getKeyBindings().size() != 0) {
            return path;
        }
    } catch (const Exception&) {
        // What cannot be read is no path.
    }
    return std::nullopt;
}

// Whether a path as somebody wrote it is that of a unit. Machines have many names.
bool _isOf(const CIMInstance& unit, const CIMObjectPath& written) {
    const CIMObjectPath& known = unit.getPath();
    const CIMNamespaceName& there = written.getNameSpace();
    const CIMNamespaceName& here = known.getNameSpace();
    const bool isElsewhere = !there.isNull() && !here.isNull() && !(there == here);
    const auto local = [](const CIMObjectPath& path) {
        return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(),
                             path.getKeyBindings());
    };
    return !isElsewhere && local(written) == local(known);
}

// The one that is meant: by its path, or by a FRU number that no other has.
CIMInstance _named(const Request& request, Operations& server) {
    const std::string& name = request.subject;
    const std::optional<CIMObjectPath> path = _asPath(name);
    std::vector<CIMInstance> meant;
    for (const CIMInstance& unit : _recorded(request, server)) {
        if (path ? _isOf(unit, *path) : _textOf(unit, "FRUNumber") == name) {
            meant.push_back(unit);
        }
    }
    if (meant.empty()) {
        throw CIMException(CIM_ERR_NOT_FOUND, make_String("no unit " + name +
                                                          " is recorded: \"fru list\" says which"));
    }
    if (meant.size() > 1) {
        throw UsageError("Several units have the FRU number " + name +
                         ": a path says which is meant, as \"names TAVIRA_FRU\" writes it");
    }
    return meant.front();
}

void _modify(CIMInstance unit, Operations& server) {
    // Who tells of it is not for us to record.
    const Uint32 source = unit.findProperty("ElementName");
    if (source != PEG_NOT_FOUND) {
        unit.removeProperty(source);
    }
    server.modifyInstance(unit, propertyNames(unit));
}

CIMObjectPath _create(CIMInstance unit, Operations& server) {
    unit.setPath(_classPath());
    return server.createInstance(unit);
}

void _edit(const Request& request, Operations& server) {
    const std::vector<Assignment> assignments =
        parseAssignments(_declaration(server), request.assignments);
    CIMInstance unit = _named(request, server).clone();
    for (const Assignment& assignment : assignments) {
        setProperty(unit, make_String(assignment.property->name), assignment.value);
    }
    _modify(unit, server);
}

std::vector<FruChange> _plan(const Request& request, Operations& server) {
    const std::string& file = request.fru.file;
    const FileContent content = readWholeFile(file, _largestImport);
    if (content.state == FileContent::Missing || content.state == FileContent::Unreadable) {
        throwSystemError("Cannot read", file, content.error);
    }
    if (content.state != FileContent::Read) {
        throw Error("Cannot read " + file + ": it is no file, or too large for one of units");
    }
    try {
        return planImport(_recorded(request, server), content.text);
    } catch (const Error& error) {
        throw Error(file + ", " + error.what());
    }
}

// Why a change is not made. Lasting: what stops it will stop the others, too.
struct Obstacle {
    std::string text;
    bool isLasting;
};

std::optional<Obstacle> _make(const FruChange& change, Operations& server) {
    try {
        if (change.isNew) {
            _create(change.unit, server);
        } else {
            _modify(change.unit.clone(), server);
        }
        return std::nullopt;
    } catch (const CIMException& exception) {
        // Of the unit alone the server says more.
        return Obstacle{statusText(exception), exception.getCode() == CIM_ERR_FAILED};
    } catch (const Error& error) {
        return Obstacle{error.what(), true};
    }
}

// Each change is written once it is made, so that one that is not leaves a record of those before
// it.
CommandResult _import(const Request& request, Operations& server, const Notes& note) {
    CommandResult result;
    const std::vector<FruChange> changes = _plan(request, server);
    std::size_t made = 0;
    for (const FruChange& change : changes) {
        const std::optional<Obstacle> obstacle =
            request.fru.isDryRun ? std::nullopt : _make(change, server);
        if (!obstacle) {
            result.text += visibleText(change.text) + "\n";
            ++made;
            continue;
        }
        result.status = EXIT_FAILED;
        note("not done: " + change.text + ": " + obstacle->text);
        if (obstacle->isLasting) {
            note("stopped: " + std::to_string(made) + " of " + std::to_string(changes.size()) +
                 " changes are made");
            break;
        }
    }
    return result;
}

}  // namespace

CommandResult runFru(const Request& request, Operations& server, const Notes& note) {
    switch (request.fru.action) {
        case FruRequest::List:
            return _list(request, server, note);
        case FruRequest::Add:
            return {makeOutput(request.format)
                        ->names({_create(createdInstance(_declaration(server), request.assignments),
                                         server)})};
        case FruRequest::Edit:
            _edit(request, server);
            return {};
        case FruRequest::Remove:
            server.deleteInstance(_named(request, server).getPath());
            return {};
        case FruRequest::Export:
            return {exportFrus(_recorded(request, server))};
        case FruRequest::Import:
            return _import(request, server, note);
    }
    return {};
}

}  // namespace QZ
