// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "CimRequest.h"

namespace QZ {

// A request for that method; `parameters` are IPARAMVALUE elements.
inline std::string requestText(const std::string& method, const std::string& parameters) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
           "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"7\" PROTOCOLVERSION=\"1.0\">"
           "<SIMPLEREQ><IMETHODCALL NAME=\"" +
           method +
           "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"tavqz\"/>"
           "</LOCALNAMESPACEPATH>" +
           parameters + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
}

inline std::string parameterText(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + value + "</IPARAMVALUE>";
}

// What becomes of a request: "400 request-not-valid", "CIM 4", or "" where it is taken.
inline std::string outcome(const std::string& text, const XmlLimits& limits = XmlLimits()) {
    try {
        decodeRequest(text, limits);
        return "";
    } catch (const CimBadRequest& bad) {
        return std::to_string(bad.status) + " " + bad.cimError;
    } catch (const CimRefusal& refusal) {
        return "CIM " + std::to_string(refusal.status);
    }
}

}  // namespace QZ
