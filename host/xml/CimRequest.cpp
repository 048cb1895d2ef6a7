// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimRequest.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <set>

#include "CimParameters.h"
#include "CimText.h"
#include "Text.h"
#include "XmlGrammar.h"
#include "XmlObjects.h"

namespace QZ {

namespace {

constexpr const char* NOT_VALID = "request-not-valid";

// The one element of a list of those that may stand there.
const XmlElement& _only(const XmlElement& element) {
    if (element.children.size() != 1) {
        throw XmlLayoutError(element.name + " holds " + std::to_string(element.children.size()) +
                             " elements, not one");
    }
    return element.children.front();
}

// Two or three numbers with points between them.
bool _isVersion(const std::string& text) {
    int points = 0;
    bool hasDigit = false;
    for (const char c : text) {
        if (c == '.' && hasDigit && points < 2) {
            ++points;
            hasDigit = false;
        } else if (c >= '0' && c <= '9') {
            hasDigit = true;
        } else {
            return false;
        }
    }
    return points > 0 && hasDigit;
}

void _checkVersion(const XmlElement& element, const char* attribute, const char* major,
                   const char* cimError) {
    const std::string& version = requiredAttribute(element, attribute);
    if (!_isVersion(version)) {
        throw XmlLayoutError(std::string(attribute) + " is no version: " + version);
    }
    if (version.rfind(major, 0) != 0) {
        throw CimBadRequest{501, cimError, std::string(attribute) + " is " + version};
    }
}

void _checkName(const XmlElement& element, const char* name) {
    if (element.name != name) {
        throw XmlLayoutError(std::string(name) + " expected, not " + element.name);
    }
}

// The call within <CIM><MESSAGE><SIMPLEREQ>.
const XmlElement& _unwrap(const XmlElement& root, std::string& messageId) {
    _checkName(root, "CIM");
    _checkVersion(root, "CIMVERSION", "2.", "unsupported-cim-version");
    _checkVersion(root, "DTDVERSION", "2.", "unsupported-dtd-version");
    const XmlElement& message = _only(root);
    _checkName(message, "MESSAGE");
    messageId = requiredAttribute(message, "ID");
    _checkVersion(message, "PROTOCOLVERSION", "1.", "unsupported-protocol-version");
    const XmlElement& request = _only(message);
    if (request.name == "MULTIREQ") {
        throw CimBadRequest{501, "multiple-requests-unsupported", "send them one by one"};
    }
    _checkName(request, "SIMPLEREQ");
    return _only(request);
}

// Carries out `read` and turns what is wrong with a value into a refusal.
template <class Read>
auto _orRefuse(const CimCall& call, int status, const std::string& what, Read read) {
    try {
        return read();
    } catch (const XmlValueError& error) {
        throw CimRefusal{call, status, what + error.what()};
    } catch (const Pegasus::Exception& exception) {
        // What the parts of an object say when they do not go together.
        throw CimRefusal{call, status, what + make_string(exception.getMessage())};
    }
}

void _readParameters(const CimMethod& method, const XmlElement& element, CimRequest& request) {
    using namespace Pegasus;
    std::set<std::string> given;
    const CimParameter* const end = method.parameters + method.parameterCount;
    for (const XmlElement& child : element.children) {
        if (child.name == "LOCALNAMESPACEPATH") {
            continue;
        }
        const std::string& name = requiredAttribute(child, "NAME");
        const CimParameter* const parameter =
            std::find_if(method.parameters, end,
                         [&](const CimParameter& known) { return sameName(known.name, name); });
        if (parameter == end) {
            throw CimRefusal{request.call, CIM_ERR_INVALID_PARAMETER,
                             request.call.method + " has no parameter " + name};
        }
        if (!given.insert(parameter->name).second) {
            throw CimRefusal{request.call, CIM_ERR_INVALID_PARAMETER, name + " is given twice"};
        }
        if (child.children.empty()) {
            given.erase(parameter->name);  // null: as if it were not there
            continue;
        }
        _orRefuse(request.call, CIM_ERR_INVALID_PARAMETER, name + ": ", [&] {
            parameter->read(_only(child), request);
            return 0;
        });
    }
    for (const CimParameter* parameter = method.parameters; parameter != end; ++parameter) {
        if (parameter->isRequired && given.count(parameter->name) == 0) {
            throw CimRefusal{request.call, CIM_ERR_INVALID_PARAMETER,
                             request.call.method + " needs " + parameter->name};
        }
    }
}

CimRequest _decode(const XmlElement& root) {
    using namespace Pegasus;
    CimRequest request;
    const XmlElement& call = _unwrap(root, request.call.messageId);
    // Behind the versions: another version has other elements.
    checkXmlGrammar(root);
    request.call.isIntrinsic = call.name == "IMETHODCALL";
    request.call.method = requiredAttribute(call, "NAME");
    if (!request.call.isIntrinsic) {
        throw CimRefusal{request.call, CIM_ERR_NOT_SUPPORTED, "the classes have no methods"};
    }
    const CimMethod* const method = findMethod(request.call.method);
    if (!method) {
        throw CimRefusal{request.call, CIM_ERR_NOT_SUPPORTED, request.call.method};
    }
    request.nameSpace = _orRefuse(request.call, CIM_ERR_INVALID_NAMESPACE, "",
                                  [&] { return readNamespacePath(call.children.front()); });
    _readParameters(*method, call, request);
    return request;
}

}  // namespace

CimRequest decodeRequest(std::string_view body, const XmlLimits& limits) {
    try {
        return _decode(parseXml(body, limits));
    } catch (const XmlError& error) {
        throw CimBadRequest{400, "request-not-well-formed", error.what()};
    } catch (const XmlLayoutError& error) {
        throw CimBadRequest{400, NOT_VALID, error.what()};
    }
}

}  // namespace QZ
