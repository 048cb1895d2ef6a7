// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Requests.h"

#include "BasicCredentials.h"

std::string request(const std::string& method, const std::string& body,
                    const std::string& userInfo) {
    const std::size_t colon = userInfo.find(':');
    std::string text = "POST /cimom HTTP/1.1\r\nHost: server\r\n";
    text += "Content-Type: application/xml; charset=utf-8\r\nCIMOperation: MethodCall\r\n";
    text += "CIMMethod: " + method + "\r\nCIMObject: root/tavqz\r\n";
    if (colon != std::string::npos) {
        text += "Authorization: " +
                QZ::basicAuthorization({userInfo.substr(0, colon), userInfo.substr(colon + 1)}) +
                "\r\n";
    }
    return text + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string call(const std::string& method, const std::string& parameters,
                 const std::string& name) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><CIM CIMVERSION=\"2.0\" "
           "DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL "
           "NAME=\"" +
           method + "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"" + name +
           "\"/></LOCALNAMESPACEPATH>" + parameters + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
}

std::string className(const std::string& name) {
    return "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"" + name + "\"/></IPARAMVALUE>";
}

std::string enumeration(const std::string& name, const std::string& parameters,
                        const std::string& userInfo) {
    return request("EnumerateInstances", call("EnumerateInstances", className(name) + parameters),
                   userInfo);
}
