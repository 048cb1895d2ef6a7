// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Commands.h"

#include <Pegasus/Common/Exception.h>

#include <map>
#include <memory>

#include "Assignment.h"
#include "CimText.h"
#include "Due.h"
#include "FruCommand.h"
#include "Output.h"
#include "Report.h"

namespace QZ {

using namespace Pegasus;

namespace {

// The text of an argument that is to become a CIM name or path.
String _argument(const std::string& text) {
    return String(text.data(), Uint32(text.size()));
}

CIMObjectPath _classPath(const std::string& name) {
    try {
        return CIMObjectPath(String(), MODEL_NAMESPACE, CIMName(_argument(name)));
    } catch (const Exception&) {
        throw UsageError("\"" + name + "\" is no class name");
    }
}

CIMObjectPath _instancePath(const std::string& text) {
    CIMObjectPath path;
    try {
        path.set(_argument(text));
    } catch (const Exception&) {
        throw UsageError("\"" + text + "\" is no path of an instance");
    }
    if (path.getKeyBindings().size() == 0) {
        throw UsageError("\"" + text + "\" names a class: \"names\" writes its instances' paths");
    }
    return path;
}

// Why classes could not be answered: each reason once, with the classes that share it.
class Failures {
public:
    void add(const std::string& className, const CIMException& exception) {
        std::string& classes = _classesByReason[statusText(exception)];
        classes += classes.empty() ? "" : ", ";
        classes += className;
    }
    void tell(const Notes& note) const {
        for (const auto& [reason, classes] : _classesByReason) {
            std::string line = classes;
            line.append(": ").append(reason);
            note(line);
        }
    }
    bool isEmpty() const { return _classesByReason.empty(); }

private:
    std::map<std::string, std::string> _classesByReason;
};

CommandResult _report(const Request& request, Operations& server, const Notes& note) {
    std::string text;
    std::vector<CIMInstance> all;
    Failures failures;
    const Schema& schema = server.schema();
    for (const auto& declared : schema.classes.classes()) {
        if (!schema.registration.instanceProvider(MODEL_NAMESPACE, declared->name)) {
            continue;
        }
        try {
            const auto found = server.enumerateInstances(_classPath(declared->name));
            all.insert(all.end(), found.begin(), found.end());
            const std::string section = reportSection(*declared, found);
            text += section.empty() || text.empty() ? section : "\n" + section;
        } catch (const CIMException& exception) {
            failures.add(declared->name, exception);
        }
    }
    failures.tell(note);
    if (request.format != "table") {
        text = makeOutput(request.format)->instances(all);
    }
    return {text, failures.isEmpty() ? EXIT_OK : EXIT_FAILED};
}

const ClassDeclaration& _declaration(Operations& server, const CIMObjectPath& path) {
    const String& name = path.getClassName().getString();
    const ClassDeclaration* declared = server.schema().classes.find(make_string(name));
    if (!declared) {
        throw CIMException(CIM_ERR_INVALID_CLASS, name);
    }
    return *declared;
}

// The instance that "set" is about: its class has one, or its path is given.
CIMInstance _current(const CIMObjectPath& target, Operations& server) {
    if (target.getKeyBindings().size() != 0) {
        return server.getInstance(target);
    }
    const std::vector<CIMInstance> current = server.enumerateInstances(target);
    if (current.size() != 1) {
        throw CIMException(CIM_ERR_FAILED,
                           target.getClassName().getString() +
                               make_String(" has " + std::to_string(current.size()) +
                                           " instances, not one: a path says which is meant"));
    }
    return current.front();
}

void _set(const Request& request, Operations& server) {
    const bool isClass = request.subject.find_first_of(".:") == std::string::npos;
    const CIMObjectPath target =
        isClass ? _classPath(request.subject) : _instancePath(request.subject);
    const ClassDeclaration& declared = _declaration(server, target);
    const std::vector<Assignment> assignments = parseAssignments(declared, request.assignments);
    const CIMInstance modified = modifiedInstance(declared, _current(target, server), assignments);
    server.modifyInstance(modified, propertyNames(modified));
}

CIMObjectPath _create(const Request& request, Operations& server) {
    const ClassDeclaration& declared = _declaration(server, _classPath(request.subject));
    CIMInstance created = createdInstance(declared, request.assignments);
    created.setPath(_classPath(declared.name));
    return server.createInstance(created);
}

CommandResult _list(const Request& request, Operations& server, const Output& output) {
    CommandResult result;
    result.instances = server.enumerateInstances(_classPath(request.subject));
    result.text = output.instances(result.instances);
    return result;
}

CommandResult _run(const Request& request, Operations& server, const Notes& note) {
    const std::unique_ptr<Output> output = makeOutput(request.format);
    switch (request.command) {
        case Request::Report:
            return _report(request, server, note);
        case Request::List:
            return _list(request, server, *output);
        case Request::Names:
            return {output->names(server.enumerateInstanceNames(_classPath(request.subject)))};
        case Request::Get:
            return {output->instances({server.getInstance(_instancePath(request.subject))})};
        case Request::Set:
            _set(request, server);
            return {};
        case Request::Create:
            return {output->names({_create(request, server)})};
        case Request::Delete:
            server.deleteInstance(_instancePath(request.subject));
            return {};
        case Request::Classes:
            return {output->classes(server.schema())};
        case Request::Due:
            return listDue(server, parseDays(request.within), request.format);
        case Request::Fru:
            return runFru(request, server, note);
        case Request::Capture:
        case Request::Sel:
        case Request::Watch:
        case Request::Passwd:
        case Request::Serve:
        case Request::Register:
            break;  // none of them asks and is answered
    }
    return {};
}

}  // namespace

std::string statusText(const CIMException& exception) {
    const std::string code = std::string(cimStatusCodeToString(exception.getCode())) + " (" +
                             std::to_string(int(exception.getCode())) + ")";
    const std::string message = make_string(exception.getMessage());
    return message.empty() ? code : code + ": " + message;
}

CommandResult runCommand(const Request& request, Operations& server, const Notes& note) {
    try {
        return _run(request, server, note);
    } catch (const CIMException& exception) {
        const bool isAboutOne =
            request.command == Request::Get || request.command == Request::Set ||
            request.command == Request::Delete || request.command == Request::Fru;
        if (!isAboutOne || exception.getCode() != CIM_ERR_NOT_FOUND) {
            throw;
        }
        note(statusText(exception));
        return {"", EXIT_NOT_FOUND};
    }
}

}  // namespace QZ
