// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RemoteServer.h"

#include <Pegasus/Common/Exception.h>

#include <utility>

#include "BasicCredentials.h"
#include "CimAnswer.h"
#include "CimRequestWriter.h"
#include "CimText.h"
#include "RemoteSchema.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Where servers keep their registration: ours, and OpenPegasus by its build.
constexpr const char* _interopNames[] = {INTEROP_NAMESPACE, "root/PG_InterOp", "interop"};

CIMNamespaceName _nameSpace(const CIMObjectPath& path) {
    return path.getNameSpace().isNull() ? CIMNamespaceName(MODEL_NAMESPACE) : path.getNameSpace();
}

CimRequest _request(const char* method, const CIMNamespaceName& nameSpace) {
    CimRequest request;
    request.call.method = method;
    request.nameSpace = nameSpace;
    return request;
}

CimRequest _classRequest(const char* method, const CIMObjectPath& path) {
    CimRequest request = _request(method, _nameSpace(path));
    request.className = path.getClassName();
    return request;
}

CimRequest _instanceRequest(const char* method, const CIMObjectPath& path) {
    CimRequest request = _request(method, _nameSpace(path));
    request.instanceName =
        CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
    return request;
}

// As the module delivers it in this process: with the namespace, without a host.
CIMObjectPath _local(const CIMObjectPath& path, const CIMNamespaceName& nameSpace) {
    return CIMObjectPath(String(), nameSpace, path.getClassName(), path.getKeyBindings());
}

// As a header has it: letters, digits and what separates names as they are.
std::string _escaped(const std::string& text) {
    static const char DIGITS[] = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x20 && byte < 0x7F && c != '%' && c != '"') {
            result += c;
        } else {
            result += {'%', DIGITS[byte >> 4U], DIGITS[byte & 0xFU]};
        }
    }
    return result;
}

const std::string* _find(const HttpAnswer& answer, const char* name) {
    for (const auto& [key, value] : answer.headers) {
        if (sameName(key, name)) {
            return &value;
        }
    }
    return nullptr;
}

}  // namespace

RemoteServer::RemoteServer(ServerAddress address, const HttpTrust& trust)
    : _address(std::move(address)),
      _client({_address.host, _address.port, _address.isSecure, trust, _address.socketFile}) {}

CimAnswer RemoteServer::_ask(CimRequest request) {
    request.call.messageId = std::to_string(++_messages);
    HttpHeaders headers{{"Content-Type", "application/xml; charset=utf-8"},
                        {"CIMProtocolVersion", "1.0"},
                        {"CIMOperation", "MethodCall"},
                        {"CIMMethod", request.call.method},
                        {"CIMObject", _escaped(make_string(request.nameSpace.getString()))}};
    if (!_address.user.empty()) {
        headers.emplace_back("Authorization",
                             basicAuthorization({_address.user, _address.password}));
    }
    const HttpAnswer answer = _client.post("/cimom", headers, encodeRequest(request));
    const std::string server = "The server at " + _address.text();
    if (answer.status == 401) {
        throw Error(server + " wants another user or password");
    }
    // Too many passwords were wrong, or too many are being looked at.
    if (const std::string* const wait = _find(answer, "Retry-After")) {
        throw Error(server + " does not answer now; try again in " + *wait + " s");
    }
    if (const std::string* const error = _find(answer, "CIMError")) {
        throw Error(server + " refused the request: " + *error);
    }
    if (answer.status != 200) {
        throw Error(server + " is no CIM server: it answered with HTTP status " +
                    std::to_string(answer.status));
    }
    try {
        return decodeAnswer(answer.body, request.call);
    } catch (const NoCimAnswer& error) {
        throw Error(server + " gave an answer that is no CIM-XML: " + error.what());
    }
}

std::vector<CIMInstance> RemoteServer::enumerateInstances(const CIMObjectPath& classPath) {
    CimRequest request = _classRequest("EnumerateInstances", classPath);
    request.localOnly = false;
    request.deepInheritance = true;
    std::vector<CIMInstance> found = _ask(request).instances;
    for (CIMInstance& instance : found) {
        instance.setPath(_local(instance.getPath(), request.nameSpace));
    }
    return found;
}

std::vector<CIMObjectPath> RemoteServer::enumerateInstanceNames(const CIMObjectPath& classPath) {
    const CimRequest request = _classRequest("EnumerateInstanceNames", classPath);
    std::vector<CIMObjectPath> found = _ask(request).paths;
    for (CIMObjectPath& path : found) {
        path = _local(path, request.nameSpace);
    }
    return found;
}

CIMInstance RemoteServer::getInstance(const CIMObjectPath& instancePath) {
    CimRequest request = _instanceRequest("GetInstance", instancePath);
    request.localOnly = false;
    const std::vector<CIMInstance> found = _ask(request).instances;
    if (found.empty()) {
        throw CIMException(CIM_ERR_NOT_FOUND, instancePath.toString());
    }
    CIMInstance instance = found.front();
    instance.setPath(_local(instancePath, request.nameSpace));
    return instance;
}

void RemoteServer::modifyInstance(const CIMInstance& modified, const CIMPropertyList& properties) {
    CimRequest request = _request("ModifyInstance", _nameSpace(modified.getPath()));
    request.instance = modified;
    request.propertyList = properties;
    _ask(request);
}

CIMObjectPath RemoteServer::createInstance(const CIMInstance& created) {
    CimRequest request = _request("CreateInstance", _nameSpace(created.getPath()));
    request.instance = created;
    const std::vector<CIMObjectPath> found = _ask(request).paths;
    return found.empty() ? CIMObjectPath() : _local(found.front(), request.nameSpace);
}

void RemoteServer::deleteInstance(const CIMObjectPath& instancePath) {
    _ask(_instanceRequest("DeleteInstance", instancePath));
}

std::string RemoteServer::interopNamespace(const std::string& className) {
    for (const char* const name : _interopNames) {
        CimRequest request = _request("GetClass", CIMNamespaceName(name));
        request.className = CIMName(make_String(className));
        try {
            _ask(request);
            return name;
        } catch (const CIMException&) {
            // No such namespace or class, or not for this user.
        }
    }
    return {};
}

// Who serves what, from wherever the server keeps that; none where it does not tell.
std::vector<CIMInstance> RemoteServer::_capabilities() {
    for (const char* const name : _interopNames) {
        try {
            return enumerateInstances(
                CIMObjectPath(String(), CIMNamespaceName(name), "PG_ProviderCapabilities"));
        } catch (const CIMException&) {
            // No such namespace or class, or not for this user.
        }
    }
    return {};
}

const Schema& RemoteServer::schema() {
    if (!_schema) {
        CimRequest request = _request("EnumerateClasses", CIMNamespaceName(MODEL_NAMESPACE));
        request.deepInheritance = true;
        request.localOnly = false;
        request.includeQualifiers = true;
        request.includeClassOrigin = true;
        const std::vector<CIMClass> classes = _ask(request).classes;
        _schema = makeRemoteSchema(classes, _capabilities());
    }
    return *_schema;
}

}  // namespace QZ
