// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SimpleInstanceResponseHandler.h"

namespace QZ {

void SimpleInstanceResponseHandler::deliver(const Pegasus::CIMInstance& instance) {
    _instances.append(instance);
}

void SimpleInstanceResponseHandler::deliver(const Pegasus::Array<Pegasus::CIMInstance>& instances) {
    for (Pegasus::Uint32 i = 0; i < instances.size(); ++i) {
        _instances.append(instances[i]);
    }
}

}  // namespace QZ
