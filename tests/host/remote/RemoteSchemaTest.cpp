// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RemoteSchema.h"

#include <gmock/gmock.h>

#include "BuildPaths.h"
#include "CimText.h"
#include "ClassConversion.h"
#include "Output.h"

using namespace QZ;
using namespace Pegasus;

namespace {

const Schema& _schema() {
    static const Schema schema = Schema::load(TAVQZ_SOURCE_DIR "/schema");
    return schema;
}

// The model's classes as a server sends them.
std::vector<CIMClass> _classes() {
    std::vector<CIMClass> classes;
    for (const auto& declared : _schema().classes.classes()) {
        classes.push_back(makeCimClass(*declared));
    }
    return classes;
}

CIMInstance _capability(const std::string& className, Uint16 type,
                        const char* nameSpace = "root/tavqz",
                        const std::string& provider = "AssetIDProvider") {
    CIMInstance capability("PG_ProviderCapabilities");
    const auto add = [&](const char* name, const CIMValue& value) {
        capability.addProperty(CIMProperty(name, value));
    };
    Array<String> spaces;
    spaces.append(nameSpace);
    Array<Uint16> types;
    types.append(type);
    add("ProviderModuleName", CIMValue(String("AssetIDProviderModule")));
    add("ProviderName", CIMValue(make_String(provider)));
    add("ClassName", CIMValue(make_String(className)));
    add("Namespaces", CIMValue(spaces));
    add("ProviderType", CIMValue(types));
    return capability;
}

std::vector<CIMInstance> _capabilities() {
    std::vector<CIMInstance> capabilities;
    for (const auto& declared : _schema().classes.classes()) {
        const ProviderEntry* const entry =
            _schema().registration.instanceProvider(MODEL_NAMESPACE, declared->name);
        if (entry) {
            capabilities.push_back(_capability(declared->name, 2, MODEL_NAMESPACE, entry->name));
        }
    }
    return capabilities;
}

bool _isServed(const Schema& schema, const char* className) {
    return schema.registration.instanceProvider(MODEL_NAMESPACE, className) != nullptr;
}

}  // namespace

TEST(RemoteSchema, IsWrittenAsTheModelItself) {
    const Schema remote = makeRemoteSchema(_classes(), _capabilities());
    EXPECT_EQ(TableOutput().classes(remote), TableOutput().classes(_schema()));
    EXPECT_EQ(JsonOutput().classes(remote), JsonOutput().classes(_schema()));
    EXPECT_EQ(CsvOutput().classes(remote), CsvOutput().classes(_schema()));
    EXPECT_EQ(MofOutput().classes(remote), MofOutput().classes(_schema()));
}

TEST(RemoteSchema, TakesProvidersOfInstancesInTheModelsNamespace) {
    const Schema remote = makeRemoteSchema(
        _classes(), {_capability("TAVIRA_Lease", 2), _capability("TAVIRA_Warranty", 4),
                     _capability("TAVIRA_FRU", 2, "root/other"), CIMInstance("PG_Other")});
    EXPECT_TRUE(_isServed(remote, "TAVIRA_Lease"));
    EXPECT_FALSE(_isServed(remote, "TAVIRA_Warranty")) << "indications only";
    EXPECT_FALSE(_isServed(remote, "TAVIRA_FRU"));
}

TEST(RemoteSchema, GuessesWhereTheServerDoesNotTell) {
    const Schema remote = makeRemoteSchema(_classes(), {});
    EXPECT_TRUE(_isServed(remote, "TAVIRA_Lease"));
    EXPECT_TRUE(_isServed(remote, "TAVIRA_ComputerSystemDetails"));
    EXPECT_FALSE(_isServed(remote, "CIM_Product")) << "its instances are those of another class";
    EXPECT_FALSE(_isServed(remote, "CIM_ManagedElement"));
    EXPECT_FALSE(_isServed(remote, "TAVIRA_LeaseExpirationEvent"));
}
