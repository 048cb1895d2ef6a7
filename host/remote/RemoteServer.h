// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "CimAnswer.h"
#include "CimRequest.h"
#include "HttpClient.h"
#include "Operations.h"
#include "ServerAddress.h"

namespace QZ {

// A CIM server over the network, asked with CIM-XML. What it refuses is thrown as CIMException as
// it said it; Error, which names the server and never the password, for what kept it from
// answering: no connection, a wrong password, something that is no CIM server, an answer that was
// cut off. One thread at a time.
class RemoteServer : public Operations {
public:
    // Connects with the first request. The trust is for https; throws Error where it makes no
    // sense.
    explicit RemoteServer(ServerAddress address, const HttpTrust& trust = {});

    // Asked for once.
    const Schema& schema() override;

    std::vector<Pegasus::CIMInstance> enumerateInstances(
        const Pegasus::CIMObjectPath& classPath) override;
    std::vector<Pegasus::CIMObjectPath> enumerateInstanceNames(
        const Pegasus::CIMObjectPath& classPath) override;
    Pegasus::CIMInstance getInstance(const Pegasus::CIMObjectPath& instancePath) override;
    void modifyInstance(const Pegasus::CIMInstance& modified,
                        const Pegasus::CIMPropertyList& properties) override;
    Pegasus::CIMObjectPath createInstance(const Pegasus::CIMInstance& created) override;
    void deleteInstance(const Pegasus::CIMObjectPath& instancePath) override;

    // The namespace, of those where servers keep their registration, that has that class; empty
    // where none has, or none for this user.
    std::string interopNamespace(const std::string& className);

private:
    CimAnswer _ask(CimRequest request);
    std::vector<Pegasus::CIMInstance> _capabilities();

    ServerAddress _address;
    HttpClient _client;
    unsigned _messages = 0;
    std::optional<Schema> _schema;
};

}  // namespace QZ
