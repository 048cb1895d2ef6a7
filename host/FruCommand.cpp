// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruCommand.h"

#include <Pegasus/Common/Exception.h>

#include "Assignment.h"
#include "CimText.h"
#include "Error.h"
#include "FileContent.h"
#include "FruImport.h"
#include "Instances.h"
#include "Output.h"
#include "TerminalText.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr std::size_t _largestImport = std::size_t{64} * 1024 * 1024;

const char* const _className = "TAVIRA_FRU";

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

std::vector<CIMInstance> _recorded(Operations& server) {
    std::vector<CIMInstance> recorded;
    for (const CIMInstance& unit : server.enumerateInstances(_classPath())) {
        if (_isRecorded(unit)) {
            recorded.push_back(unit);
        }
    }
    return recorded;
}

CommandResult _list(const Request& request, Operations& server) {
    std::vector<CIMInstance> units;
    for (const CIMInstance& found : server.enumerateInstances(_classPath())) {
        CIMInstance unit = found.clone();
        unit.addProperty(CIMProperty(CIMName("Recorded"), CIMValue(Boolean(_isRecorded(unit)))));
        units.push_back(unit);
    }
    return {makeOutput(request.format)->instances(units)};
}

// The one that is meant: by its path, or by a FRU number that no other has.
CIMInstance _named(const std::string& name, Operations& server) {
    const bool isPath = name.find('=') != std::string::npos;
    std::vector<CIMInstance> meant;
    for (const CIMInstance& unit : _recorded(server)) {
        const CIMObjectPath& path = unit.getPath();
        const CIMObjectPath local(String(), CIMNamespaceName(), path.getClassName(),
                                  path.getKeyBindings());
        const std::string known =
            isPath ? make_string(local.toString()) : _textOf(unit, "FRUNumber");
        if (known == name || make_string(path.toString()) == name) {
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
    CIMInstance unit = _named(request.subject, server).clone();
    for (const Assignment& assignment : assignments) {
        setProperty(unit, make_String(assignment.property->name), assignment.value);
    }
    _modify(unit, server);
}

std::vector<FruChange> _plan(const std::string& file, Operations& server) {
    const FileContent content = readWholeFile(file, _largestImport);
    if (content.state == FileContent::Missing || content.state == FileContent::Unreadable) {
        throwSystemError("Cannot read", file, content.error);
    }
    if (content.state != FileContent::Read) {
        throw Error("Cannot read " + file + ": it is no file, or too large for one of units");
    }
    try {
        return planImport(_recorded(server), content.text);
    } catch (const Error& error) {
        throw Error(file + ", " + error.what());
    }
}

// Each change is written once it is made, so that one that is refused leaves a record of those
// before it.
CommandResult _import(const Request& request, Operations& server, const Notes& note) {
    CommandResult result;
    for (const FruChange& change : _plan(request.fru.file, server)) {
        try {
            if (!request.fru.isDryRun && change.isNew) {
                _create(change.unit, server);
            } else if (!request.fru.isDryRun) {
                _modify(change.unit.clone(), server);
            }
            result.text += visibleText(change.text) + "\n";
        } catch (const CIMException& exception) {
            note("not done: " + change.text + ": " + statusText(exception));
            result.status = EXIT_FAILED;
        }
    }
    return result;
}

}  // namespace

CommandResult runFru(const Request& request, Operations& server, const Notes& note) {
    switch (request.fru.action) {
        case FruRequest::List:
            return _list(request, server);
        case FruRequest::Add:
            return {makeOutput(request.format)
                        ->names({_create(createdInstance(_declaration(server), request.assignments),
                                         server)})};
        case FruRequest::Edit:
            _edit(request, server);
            return {};
        case FruRequest::Remove:
            server.deleteInstance(_named(request.subject, server).getPath());
            return {};
        case FruRequest::Export:
            return {exportFrus(_recorded(server))};
        case FruRequest::Import:
            return _import(request, server, note);
    }
    return {};
}

}  // namespace QZ
