// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// A request as bytes: CIM-XML, with the operation's headers (DSP0200) for "root/tavqz"; a password
// unless "user:password" is empty.
std::string request(const std::string& method, const std::string& body,
                    const std::string& userInfo);

// A whole message (DSP0201) that calls an operation with parameters as XML.
std::string call(const std::string& method, const std::string& parameters,
                 const std::string& name = "tavqz");

// The parameter ClassName.
std::string className(const std::string& name);

// EnumerateInstances of a class, with what is given of parameters.
std::string enumeration(const std::string& name, const std::string& parameters,
                        const std::string& userInfo);
