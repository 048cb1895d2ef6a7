// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <tavqz/CimOmHandleBackend.h>

#include <map>
#include <string>
#include <vector>

#include "CimText.h"
#include "Gatherers.h"

// The CIM server that the gatherers ask for as long as this lives: it has the classes of `sources`,
// and no others.
class SourceServer {
public:
    SourceServer() { QZ::_fruServer = &_handle; }
    ~SourceServer() { QZ::_fruServer = nullptr; }
    SourceServer(const SourceServer&) = delete;
    SourceServer& operator=(const SourceServer&) = delete;

    std::map<std::string, std::vector<Pegasus::CIMInstance>> sources;
    // What was asked, as "NAMESPACE:CLASS" with the flags that were set.
    std::vector<std::string> asked;

private:
    class Backend : public Pegasus::CimOmHandleBackend {
    public:
        explicit Backend(SourceServer& server) : _server(server) {}

        Pegasus::Array<Pegasus::CIMInstance> enumerateInstances(
            const Pegasus::OperationContext&, const Pegasus::CIMNamespaceName& nameSpace,
            const Pegasus::CIMName& className, Pegasus::Boolean deepInheritance,
            Pegasus::Boolean localOnly, Pegasus::Boolean includeQualifiers,
            Pegasus::Boolean includeClassOrigin,
            const Pegasus::CIMPropertyList& propertyList) override {
            const std::string name = QZ::make_string(className.getString());
            std::string question = QZ::make_string(nameSpace.getString()) + ":" + name;
            question += deepInheritance || localOnly || includeQualifiers || includeClassOrigin ||
                                !propertyList.isNull()
                            ? "?"
                            : "";
            _server.asked.push_back(question);
            const auto found = _server.sources.find(name);
            if (found == _server.sources.end())
                throw Pegasus::CIMException(Pegasus::CIM_ERR_NOT_SUPPORTED, className.getString());
            return {found->second.data(), Pegasus::Uint32(found->second.size())};
        }

    private:
        SourceServer& _server;
    };

    Pegasus::CIMOMHandle _handle{std::make_shared<Backend>(*this)};
};
