// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimServer.h"

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "ClassConversion.h"
#include "ServerCall.h"
#include "Text.h"

// The operations on classes and qualifiers, and the table of all operations.

namespace QZ {

using namespace Pegasus;

namespace {

// The defaults are those of DSP0200, 5.3.2.1.
std::string _classXml(const ClassDeclaration& declared, const CimRequest& request) {
    const bool localOnly = request.localOnly.value_or(true);
    XmlForm form;
    form.includeQualifiers = request.includeQualifiers.value_or(true);
    form.includeClassOrigin = request.includeClassOrigin.value_or(false);
    form.selects = [&](const CIMConstProperty& property) {
        return !(localOnly && property.getPropagated()) &&
               (request.propertyList.isNull() ||
                namesProperty(request.propertyList, property.getName()));
    };
    std::string xml;
    appendClass(xml, makeCimClass(declared), form);
    return xml;
}

// The attributes of SCOPE, in DSP0201's order.
std::string _scopeXml(unsigned scope) {
    static const struct {
        unsigned bit;
        const char* attribute;
    } SCOPES[] = {
        {SCOPE_CLASS, "CLASS"},           {SCOPE_ASSOCIATION, "ASSOCIATION"},
        {SCOPE_REFERENCE, "REFERENCE"},   {SCOPE_PROPERTY, "PROPERTY"},
        {SCOPE_METHOD, "METHOD"},         {SCOPE_PARAMETER, "PARAMETER"},
        {SCOPE_INDICATION, "INDICATION"},
    };
    std::string xml;
    for (const auto& known : SCOPES) {
        if ((scope & known.bit) != 0) {
            xml.append(" ").append(known.attribute).append("=\"true\"");
        }
    }
    return xml;
}

std::string _qualifierXml(const QualifierDeclaration& declared) {
    std::string xml;
    appendQualifierDeclaration(
        xml, {declared.name,
              declared.defaultValue.isNull() ? CIMValue(declared.type, declared.isArray)
                                             : declared.defaultValue,
              declared.flavor, _scopeXml(declared.scope)});
    return xml;
}

}  // namespace

void CimServer::_enumerateClassNames(const Call& call) {
    const std::string top = nameText(call.request.className);
    if (!top.empty()) {
        _declared(call, call.request.className, CIM_ERR_INVALID_CLASS);
    }
    const bool isDeep = call.request.deepInheritance.value_or(false);
    for (const ClassDeclaration* declared : call.classes.subclasses(top, isDeep)) {
        std::string xml;
        appendClassName(xml, declared->name);
        call.writer.element(xml);
    }
    call.writer.returns();
}

void CimServer::_enumerateClasses(const Call& call) {
    const std::string top = nameText(call.request.className);
    if (!top.empty()) {
        _declared(call, call.request.className, CIM_ERR_INVALID_CLASS);
    }
    const bool isDeep = call.request.deepInheritance.value_or(false);
    for (const ClassDeclaration* declared : call.classes.subclasses(top, isDeep)) {
        call.writer.element(_classXml(*declared, call.request));
    }
    call.writer.returns();
}

void CimServer::_getClass(const Call& call) {
    call.writer.element(
        _classXml(_declared(call, call.request.className, CIM_ERR_NOT_FOUND), call.request));
}

void CimServer::_enumerateQualifiers(const Call& call) {
    for (const QualifierDeclaration& declared : call.classes.qualifiers()) {
        call.writer.element(_qualifierXml(declared));
    }
    call.writer.returns();
}

void CimServer::_getQualifier(const Call& call) {
    const QualifierDeclaration* const declared =
        call.classes.findQualifier(call.request.qualifierName);
    if (!declared) {
        throw CIMException(CIM_ERR_NOT_FOUND, make_String(call.request.qualifierName));
    }
    call.writer.element(_qualifierXml(*declared));
}

struct CimServer::Row {
    const char* method;
    Operation operation;
};

const CimServer::Row CimServer::_operations[] = {
    {"EnumerateInstances", &CimServer::_enumerateInstances},
    {"EnumerateInstanceNames", &CimServer::_enumerateInstanceNames},
    {"GetInstance", &CimServer::_getInstance},
    {"ModifyInstance", &CimServer::_modifyInstance},
    {"CreateInstance", &CimServer::_createInstance},
    {"DeleteInstance", &CimServer::_deleteInstance},
    {"GetProperty", &CimServer::_getProperty},
    {"SetProperty", &CimServer::_setProperty},
    {"EnumerateClassNames", &CimServer::_enumerateClassNames},
    {"EnumerateClasses", &CimServer::_enumerateClasses},
    {"GetClass", &CimServer::_getClass},
    {"EnumerateQualifiers", &CimServer::_enumerateQualifiers},
    {"GetQualifier", &CimServer::_getQualifier},
    {"OpenEnumerateInstances", &CimServer::_openEnumeration},
    {"OpenEnumerateInstancePaths", &CimServer::_openEnumeration},
    {"PullInstancesWithPath", &CimServer::_pull},
    {"PullInstancePaths", &CimServer::_pull},
    {"CloseEnumeration", &CimServer::_closeEnumeration},
};

void CimServer::carryOut(const CimRequest& request, const InProcessServer::Caller& caller,
                         CimResponseWriter& writer) {
    _contexts.dropExpired();
    const std::string nameSpace = make_string(request.nameSpace.getString());
    const ClassRepository* const classes = _providers.schema().find(nameSpace);
    if (!classes) {
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, request.nameSpace.getString());
    }
    const Call call{request, caller, writer, *classes, sameName(nameSpace, INTEROP_NAMESPACE)};
    for (const Row& row : _operations) {
        if (request.call.method == row.method) {
            (this->*row.operation)(call);
            writer.end();
            return;
        }
    }
    throw CIMException(CIM_ERR_NOT_SUPPORTED, make_String(request.call.method));
}

}  // namespace QZ
