// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimAnswer.h"

#include <Pegasus/Common/Exception.h>

#include <charconv>

#include "CimText.h"
#include "XmlObjects.h"

namespace QZ {

using namespace Pegasus;

namespace {

// A server's answer may be long: it is bounded by what the client reads at all.
constexpr XmlLimits LIMITS{64, 20'000'000};

String _string(const std::string& text) {
    return String(text.data(), Uint32(text.size()));
}

const XmlElement& _child(const XmlElement& element, const char* name) {
    const XmlElement* const child = element.child(name);
    if (!child) {
        throw XmlLayoutError(element.name + " has no " + name);
    }
    return *child;
}

// VALUE.NAMEDINSTANCE and VALUE.INSTANCEWITHPATH: an instance behind its path.
CIMInstance _instanceWithPath(const XmlElement& element) {
    CIMInstance instance = readInstance(_child(element, "INSTANCE"));
    if (const XmlElement* const name = element.child("INSTANCENAME")) {
        instance.setPath(readInstanceName(*name));
    } else {
        XmlElement holder;
        holder.name = element.name;
        holder.children.push_back(_child(element, "INSTANCEPATH"));
        instance.setPath(readAnyPath(holder));
    }
    return instance;
}

CIMObjectPath _path(const XmlElement& element) {
    XmlElement holder;
    holder.name = "IRETURNVALUE";
    holder.children.push_back(element);
    return readAnyPath(holder);
}

void _read(const XmlElement& element, CimAnswer& answer) {
    const std::string& name = element.name;
    if (name == "VALUE.NAMEDINSTANCE" || name == "VALUE.INSTANCEWITHPATH") {
        answer.instances.push_back(_instanceWithPath(element));
    } else if (name == "INSTANCE") {
        answer.instances.push_back(readInstance(element));
    } else if (name == "INSTANCENAME" || name == "INSTANCEPATH") {
        answer.paths.push_back(_path(element));
    } else if (name == "CLASS") {
        answer.classes.push_back(readClass(element));
    } else if (name == "CLASSNAME") {
        answer.classNames.push_back(requiredAttribute(element, "NAME"));
    } else if (name == "VALUE" || name == "VALUE.ARRAY") {
        answer.values.push_back(readUntypedValue(element));
    } else if (name != "QUALIFIER.DECLARATION" && name != "VALUE.REFERENCE") {
        throw XmlLayoutError("IRETURNVALUE holds " + name);
    }
}

[[noreturn]] void _refuse(const XmlElement& error) {
    const std::string& code = requiredAttribute(error, "CODE");
    unsigned status = CIM_ERR_FAILED;
    std::from_chars(code.data(), code.data() + code.size(), status);
    const std::string* const text = error.attribute("DESCRIPTION");
    throw CIMException(CIMStatusCode(status), text ? _string(*text) : String());
}

CimAnswer _decode(std::string_view body, const CimCall& call) {
    const XmlElement root = parseXml(body, LIMITS);
    if (root.name != "CIM") {
        throw XmlLayoutError("CIM expected, not " + root.name);
    }
    const XmlElement& message = _child(root, "MESSAGE");
    const XmlElement& response = _child(_child(message, "SIMPLERSP"), "IMETHODRESPONSE");
    if (requiredAttribute(message, "ID") != call.messageId ||
        requiredAttribute(response, "NAME") != call.method) {
        throw XmlLayoutError("it answers another call");
    }
    CimAnswer answer;
    for (const XmlElement& child : response.children) {
        if (child.name == "ERROR") {
            _refuse(child);
        } else if (child.name == "IRETURNVALUE") {
            for (const XmlElement& element : child.children) {
                _read(element, answer);
            }
        } else if (child.name == "PARAMVALUE") {
            const XmlElement* const value = child.child("VALUE");
            answer.parameters[requiredAttribute(child, "NAME")] = value ? value->text : "";
        } else {
            throw XmlLayoutError("IMETHODRESPONSE holds " + child.name);
        }
    }
    return answer;
}

}  // namespace

CimAnswer decodeAnswer(std::string_view body, const CimCall& call) {
    try {
        return _decode(body, call);
    } catch (const XmlError& error) {
        throw NoCimAnswer(error.what());
    } catch (const XmlLayoutError& error) {
        throw NoCimAnswer(error.what());
    } catch (const XmlValueError& error) {
        throw NoCimAnswer(error.what());
    } catch (const CIMException&) {
        throw;
    } catch (const Exception& exception) {
        // What the parts of an object say when they do not go together.
        throw NoCimAnswer(make_string(exception.getMessage()));
    }
}

}  // namespace QZ
