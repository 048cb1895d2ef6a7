// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/ResponseHandler.h>

namespace Pegasus {

// Out of line, so that this library alone holds the type information of each handler, and a cast
// in a module knows the host's.
ResponseHandler::~ResponseHandler() = default;
InstanceResponseHandler::~InstanceResponseHandler() = default;
ObjectPathResponseHandler::~ObjectPathResponseHandler() = default;
MethodResultResponseHandler::~MethodResultResponseHandler() = default;
IndicationResponseHandler::~IndicationResponseHandler() = default;
ObjectResponseHandler::~ObjectResponseHandler() = default;

ResponseHandler::ResponseHandler() = default;
ResponseHandler::ResponseHandler(const ResponseHandler& handler) = default;
ResponseHandler& ResponseHandler::operator=(const ResponseHandler& handler) = default;

void ResponseHandler::setContext(const OperationContext& context) {
    _context = context;
}

OperationContext ResponseHandler::getContext() const {
    return _context;
}

}  // namespace Pegasus
