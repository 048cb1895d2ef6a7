// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/ResponseHandler.h>

namespace QZ {

// Collects what an operation delivers; its owner reads it once the operation has returned.
class SimpleInstanceResponseHandler : public Pegasus::InstanceResponseHandler {
public:
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMInstance& instance) override;
    void deliver(const Pegasus::Array<Pegasus::CIMInstance>& instances) override;

    const Pegasus::Array<Pegasus::CIMInstance>& getInstances() const { return _instances; }

private:
    Pegasus::Array<Pegasus::CIMInstance> _instances;
};

}  // namespace QZ
