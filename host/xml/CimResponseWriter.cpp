// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimResponseWriter.h"

#include "XmlText.h"

namespace QZ {

namespace {

// What is gathered before it is handed on.
constexpr std::size_t PIECE = std::size_t(16) * 1024;

// Room for an answer of one instance.
constexpr std::size_t FIRST = std::size_t(4) * 1024;

void _appendHead(std::string& xml, const CimCall& call) {
    xml +=
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"";
    appendXmlText(xml, call.messageId);
    xml += "\" PROTOCOLVERSION=\"1.0\"><SIMPLERSP>";
    xml += call.isIntrinsic ? "<IMETHODRESPONSE NAME=\"" : "<METHODRESPONSE NAME=\"";
    appendXmlText(xml, call.method);
    xml += "\">";
}

void _appendTail(std::string& xml, const CimCall& call) {
    xml += call.isIntrinsic ? "</IMETHODRESPONSE>" : "</METHODRESPONSE>";
    xml += "</SIMPLERSP></MESSAGE></CIM>\n";
}

}  // namespace

void CimResponseWriter::_flush(std::size_t limit) {
    if (_xml.size() >= limit && !_xml.empty()) {
        _sink(_xml);
        _xml.clear();
    }
}

void CimResponseWriter::_begin() {
    if (_place == NotBegun) {
        _xml.reserve(FIRST);
        _appendHead(_xml, _call);
        _place = Begun;
    }
}

void CimResponseWriter::_beginValue() {
    _begin();
    if (_place == Begun) {
        _xml += "<IRETURNVALUE>";
        _place = InValue;
    }
}

void CimResponseWriter::_endValue() {
    if (_place == InValue) {
        _xml += "</IRETURNVALUE>";
        _place = BehindValue;
    }
}

void CimResponseWriter::namedInstance(const Pegasus::CIMObjectPath& path,
                                      const Pegasus::CIMConstInstance& instance,
                                      const XmlForm& form) {
    _beginValue();
    _xml += "<VALUE.NAMEDINSTANCE>";
    appendInstanceName(_xml, path);
    appendInstance(_xml, instance, form);
    _xml += "</VALUE.NAMEDINSTANCE>";
    _flush(PIECE);
}

void CimResponseWriter::instanceWithPath(const Pegasus::CIMObjectPath& path,
                                         const Pegasus::CIMConstInstance& instance,
                                         const XmlForm& form) {
    _beginValue();
    _xml += "<VALUE.INSTANCEWITHPATH>";
    appendFullInstancePath(_xml, path);
    appendInstance(_xml, instance, form);
    _xml += "</VALUE.INSTANCEWITHPATH>";
    _flush(PIECE);
}

void CimResponseWriter::element(const std::string& xml) {
    _beginValue();
    _xml += xml;
    _flush(PIECE);
}

void CimResponseWriter::parameter(const char* name, const char* type, const std::string& value) {
    _begin();
    _endValue();
    _xml.append("<PARAMVALUE NAME=\"").append(name);
    _xml.append("\" PARAMTYPE=\"").append(type).append("\">");
    appendTextValue(_xml, value);
    _xml += "</PARAMVALUE>";
}

void CimResponseWriter::end() {
    _begin();
    _endValue();
    _appendTail(_xml, _call);
    _flush(0);
}

std::string CimResponseWriter::error(const CimCall& call, int status,
                                     const std::string& description) {
    std::string xml;
    _appendHead(xml, call);
    xml.append("<ERROR CODE=\"").append(std::to_string(status)).append("\"");
    if (!description.empty()) {
        xml += " DESCRIPTION=\"";
        appendXmlText(xml, description);
        xml += '"';
    }
    xml += "/>";
    _appendTail(xml, call);
    return xml;
}

}  // namespace QZ
