// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "CimText.h"
#include "InProcessServer.h"

// A server with the test module and its model.
class TestServer : public QZ::InProcessServer {
public:
    TestServer()
        : InProcessServer(QZ::Schema::load(TEST_SCHEMA), [](const std::string& location) {
              return location == "TestProvider" ? TEST_MODULE : "/nowhere/lib" + location + ".so";
          }) {}

    std::vector<Pegasus::CIMInstance> all(const char* className) {
        return enumerateInstances(classPath(className));
    }

    static Pegasus::CIMObjectPath classPath(const char* className) {
        return Pegasus::CIMObjectPath(Pegasus::String(), "root/tavqz", className);
    }
};
