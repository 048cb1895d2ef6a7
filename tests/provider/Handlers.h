// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <vector>

// Response handlers as a server has them: they keep what is delivered, and how it was framed.

class Framing : virtual public Pegasus::ResponseHandler {
public:
    void processing() override { ++processingCalls; }
    void complete() override { ++completeCalls; }

    // Opened once and closed once.
    bool isWhole() const { return processingCalls == 1 && completeCalls == 1; }

    int processingCalls = 0;
    int completeCalls = 0;
};

class Instances : public Pegasus::InstanceResponseHandler, public Framing {
public:
    void processing() override { Framing::processing(); }
    void complete() override { Framing::complete(); }
    void deliver(const Pegasus::CIMInstance& instance) override { all.push_back(instance); }
    void deliver(const Pegasus::Array<Pegasus::CIMInstance>& instances) override {
        for (Pegasus::Uint32 i = 0; i < instances.size(); ++i) {
            all.push_back(instances[i]);
        }
    }

    std::vector<Pegasus::CIMInstance> all;
};

class Paths : public Pegasus::ObjectPathResponseHandler, public Framing {
public:
    void processing() override { Framing::processing(); }
    void complete() override { Framing::complete(); }
    void deliver(const Pegasus::CIMObjectPath& path) override { all.push_back(path); }
    void deliver(const Pegasus::Array<Pegasus::CIMObjectPath>& paths) override {
        for (Pegasus::Uint32 i = 0; i < paths.size(); ++i) {
            all.push_back(paths[i]);
        }
    }

    std::vector<Pegasus::CIMObjectPath> all;
};

// For a modification.
class Acknowledgement : public Framing {};
