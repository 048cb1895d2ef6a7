// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ExportMessage.h"

#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "XmlObjects.h"
#include "XmlText.h"
#include "XmlTree.h"
#include "XmlWriting.h"

namespace QZ {

namespace {

constexpr const char* METHOD = "ExportIndication";
constexpr const char* PARAMETER = "NewIndication";

std::string _head(const std::string& messageId) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"";
    appendXmlText(xml, messageId);
    return xml + "\" PROTOCOLVERSION=\"1.0\">";
}

HttpHeaders _headers(const char* kind) {
    return {{"Content-Type", "application/xml; charset=utf-8"}, {"CIMExport", kind}};
}

const XmlElement& _child(const XmlElement& element, const char* name) {
    const XmlElement* const child = element.child(name);
    if (!child) {
        throw NoExportMessage(element.name + " holds no " + name);
    }
    return *child;
}

// The message, and its one element.
const XmlElement& _message(const XmlElement& root) {
    if (root.name != "CIM") {
        throw NoExportMessage("CIM expected, not " + root.name);
    }
    return _child(root, "MESSAGE");
}

ExportRequest _request(std::string_view body) {
    const XmlElement root = parseXml(body, XmlLimits());
    const XmlElement& message = _message(root);
    const XmlElement& call = _child(_child(message, "SIMPLEEXPREQ"), "EXPMETHODCALL");
    const XmlElement& parameter = _child(call, "EXPPARAMVALUE");
    if (requiredAttribute(call, "NAME") != METHOD ||
        requiredAttribute(parameter, "NAME") != PARAMETER) {
        throw NoExportMessage("only ExportIndication with its NewIndication is known");
    }
    return {requiredAttribute(message, "ID"), readInstance(_child(parameter, "INSTANCE"))};
}

void _checkAnswer(std::string_view body, const std::string& messageId) {
    const XmlElement root = parseXml(body, XmlLimits());
    const XmlElement& message = _message(root);
    const XmlElement& answer = _child(_child(message, "SIMPLEEXPRSP"), "EXPMETHODRESPONSE");
    if (requiredAttribute(message, "ID") != messageId) {
        throw NoExportMessage("it answers another message");
    }
    if (const XmlElement* const error = answer.child("ERROR")) {
        const std::string* const text = error->attribute("DESCRIPTION");
        throw ExportRefused("CIM status " + requiredAttribute(*error, "CODE") +
                            (text ? ": " + *text : std::string()));
    }
}

// Whatever is wrong with a document, it is none of ours.
template <class Read>
auto _guard(Read read) {
    try {
        return read();
    } catch (const XmlError& error) {
        throw NoExportMessage(error.what());
    } catch (const XmlLayoutError& error) {
        throw NoExportMessage(error.what());
    } catch (const XmlValueError& error) {
        throw NoExportMessage(error.what());
    } catch (const Pegasus::Exception& exception) {
        throw NoExportMessage(make_string(exception.getMessage()));
    }
}

}  // namespace

HttpHeaders exportRequestHeaders() {
    HttpHeaders headers = _headers("MethodRequest");
    headers.emplace_back("CIMProtocolVersion", "1.0");
    headers.emplace_back("CIMExportMethod", METHOD);
    return headers;
}

std::string encodeExportRequest(const ExportRequest& request) {
    std::string xml = _head(request.messageId);
    xml.append("<SIMPLEEXPREQ><EXPMETHODCALL NAME=\"").append(METHOD);
    xml.append("\"><EXPPARAMVALUE NAME=\"").append(PARAMETER).append("\">");
    appendInstance(xml, request.alert, XmlForm());
    return xml + "</EXPPARAMVALUE></EXPMETHODCALL></SIMPLEEXPREQ></MESSAGE></CIM>\n";
}

ExportRequest decodeExportRequest(std::string_view body) {
    return _guard([&] { return _request(body); });
}

HttpHeaders exportAnswerHeaders() {
    return _headers("MethodResponse");
}

std::string encodeExportAnswer(const std::string& messageId) {
    return _head(messageId) + "<SIMPLEEXPRSP><EXPMETHODRESPONSE NAME=\"" + METHOD +
           "\"><IRETURNVALUE/></EXPMETHODRESPONSE></SIMPLEEXPRSP></MESSAGE></CIM>\n";
}

void checkExportAnswer(std::string_view body, const std::string& messageId) {
    _guard([&] { _checkAnswer(body, messageId); });
}

}  // namespace QZ
