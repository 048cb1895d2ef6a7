// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimRequestWriter.h"

#include "XmlText.h"
#include "XmlWriting.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Appends the parameters of one call.
class ParameterWriter {
public:
    explicit ParameterWriter(std::string& xml) : _xml(xml) {}

    void element(const char* name, const std::string& value) {
        _xml.append("<IPARAMVALUE NAME=\"").append(name).append("\">");
        _xml.append(value).append("</IPARAMVALUE>");
    }
    void text(const char* name, const std::string& value) {
        std::string xml;
        appendTextValue(xml, value);
        element(name, xml);
    }
    void flag(const char* name, const std::optional<bool>& value) {
        if (value) {
            text(name, *value ? "TRUE" : "FALSE");
        }
    }
    void number(const char* name, const std::optional<std::uint32_t>& value) {
        if (value) {
            text(name, std::to_string(*value));
        }
    }
    void optionalText(const char* name, const std::optional<std::string>& value) {
        if (value) {
            text(name, *value);
        }
    }

private:
    std::string& _xml;
};

std::string _modifiedInstance(const CIMInstance& instance) {
    std::string xml = "<VALUE.NAMEDINSTANCE>";
    appendInstanceName(xml, instance.getPath());
    appendInstance(xml, instance, XmlForm());
    return xml + "</VALUE.NAMEDINSTANCE>";
}

std::string _propertyList(const CIMPropertyList& list) {
    std::string xml = "<VALUE.ARRAY>";
    for (Uint32 i = 0; i < list.size(); ++i) {
        xml += "<VALUE>";
        appendXmlText(xml, list[i].getString());
        xml += "</VALUE>";
    }
    return xml + "</VALUE.ARRAY>";
}

std::string _untyped(const CimUntypedValue& value) {
    std::string xml = value.isArray ? "<VALUE.ARRAY>" : "";
    for (const auto& text : value.texts) {
        if (text) {
            appendTextValue(xml, *text);
        } else {
            xml += "<VALUE.NULL/>";
        }
    }
    return xml + (value.isArray ? "</VALUE.ARRAY>" : "");
}

void _appendObjects(ParameterWriter& writer, const CimRequest& request) {
    if (!request.className.isNull()) {
        std::string xml = "<CLASSNAME NAME=\"";
        appendXmlText(xml, request.className.getString());
        writer.element("ClassName", xml + "\"/>");
    }
    if (!request.instanceName.getClassName().isNull()) {
        std::string xml;
        appendInstanceName(xml, request.instanceName);
        writer.element("InstanceName", xml);
    }
    if (request.instance.isUninitialized()) {
        return;
    }
    if (request.call.method == "ModifyInstance") {
        writer.element("ModifiedInstance", _modifiedInstance(request.instance));
    } else {
        std::string xml;
        appendInstance(xml, request.instance, XmlForm());
        writer.element("NewInstance", xml);
    }
}

}  // namespace

std::string encodeRequest(const CimRequest& request) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"";
    appendXmlText(xml, request.call.messageId);
    xml += "\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"";
    appendXmlText(xml, request.call.method);
    xml += "\">";
    appendLocalNamespace(xml, request.nameSpace);
    ParameterWriter writer(xml);
    _appendObjects(writer, request);
    writer.flag("LocalOnly", request.localOnly);
    writer.flag("DeepInheritance", request.deepInheritance);
    writer.flag("IncludeQualifiers", request.includeQualifiers);
    writer.flag("IncludeClassOrigin", request.includeClassOrigin);
    if (!request.propertyList.isNull()) {
        writer.element("PropertyList", _propertyList(request.propertyList));
    }
    if (!request.propertyName.empty()) {
        writer.text("PropertyName", request.propertyName);
    }
    if (!request.qualifierName.empty()) {
        writer.text("QualifierName", request.qualifierName);
    }
    if (!request.newValue.isNull) {
        writer.element("NewValue", _untyped(request.newValue));
    }
    writer.optionalText("FilterQueryLanguage", request.filterQueryLanguage);
    writer.optionalText("FilterQuery", request.filterQuery);
    writer.number("OperationTimeout", request.operationTimeout);
    writer.flag("ContinueOnError", request.continueOnError);
    writer.optionalText("EnumerationContext", request.enumerationContext);
    writer.number("MaxObjectCount", request.maxObjectCount);
    return xml + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>\n";
}

}  // namespace QZ
