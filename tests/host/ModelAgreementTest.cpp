// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// What the shipped module sends, held against the model.

#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <set>

#include "BuildPaths.h"
#include "CimText.h"
#include "InProcessServer.h"
#include "ScopedWorkingFolder.h"
#include "TestMachine.h"

using namespace QZ;
using namespace Pegasus;

namespace {

Schema _load() {
    return Schema::load(TAVQZ_SOURCE_DIR "/schema");
}

const Schema& _schema() {
    static const Schema schema = _load();
    return schema;
}

std::vector<const ClassDeclaration*> _servedClasses() {
    std::vector<const ClassDeclaration*> served;
    for (const auto& declared : _schema().classes.classes()) {
        if (_schema().registration.instanceProvider(MODEL_NAMESPACE, declared->name)) {
            served.push_back(declared.get());
        }
    }
    return served;
}

CIMObjectPath _classPath(const ClassDeclaration& declared) {
    return CIMObjectPath(String(), MODEL_NAMESPACE, make_String(declared.name));
}

// Properties by class that some instance had.
using Seen = std::map<std::string, std::set<std::string>>;

void _checkProperty(const ClassDeclaration& declared, const CIMConstProperty& property) {
    const std::string name = make_string(property.getName().getString());
    const PropertyDeclaration* declaration = declared.find(name);
    ASSERT_TRUE(declaration) << name << " is not declared";
    EXPECT_EQ(declaration->name, name);
    EXPECT_EQ(declaration->type, property.getType()) << name;
    EXPECT_EQ(declaration->isArray, bool(property.isArray())) << name;
    EXPECT_FALSE(declaration->isPropagated) << name << " is sent, and so has to be declared anew";
}

void _checkPath(const ClassDeclaration& declared, const CIMInstance& instance) {
    std::set<std::string> keys;
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isKey()) {
            keys.insert(property.name);
        }
    }
    const Array<CIMKeyBinding>& bindings = instance.getPath().getKeyBindings();
    for (Uint32 i = 0; i < bindings.size(); ++i) {
        const std::string name = make_string(bindings[i].getName().getString());
        EXPECT_EQ(keys.erase(name), 1U) << name << " is no key, or given twice";
        const Uint32 at = instance.findProperty(bindings[i].getName());
        ASSERT_NE(at, PEG_NOT_FOUND) << name;
        const CIMValue value = instance.getProperty(at).getValue();
        EXPECT_EQ(bindings[i].getValue(), value.toString()) << name;
        EXPECT_EQ(bindings[i].getType() == CIMKeyBinding::STRING, value.getType() == CIMTYPE_STRING)
            << name;
    }
    EXPECT_THAT(keys, testing::IsEmpty());
}

void _check(const ClassDeclaration& declared, const CIMInstance& instance, Seen& seen) {
    SCOPED_TRACE(make_string(instance.getPath().toString()));
    EXPECT_EQ(make_string(instance.getClassName().getString()), declared.name);
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        _checkProperty(declared, instance.getProperty(i));
        seen[declared.name].insert(make_string(instance.getProperty(i).getName().getString()));
    }
    _checkPath(declared, instance);
}

// Some value that is not what a property without one has.
CIMValue _someValue(const PropertyDeclaration& property) {
    switch (property.type) {
        case CIMTYPE_UINT8:
            return CIMValue(Uint8(7));
        case CIMTYPE_UINT32:
            return CIMValue(Uint32(70000));
        case CIMTYPE_DATETIME:
            return CIMValue(CIMDateTime("20260131000000.000000+000"));
        default:
            return CIMValue(String("text"));
    }
}

// A unit as people record them.
void _createFru(InProcessServer& server, const ClassDeclaration& declared) {
    CIMInstance created(make_String(declared.name));
    for (const PropertyDeclaration& property : declared.properties) {
        if (!property.isPropagated) {
            created.addProperty(CIMProperty(make_String(property.name), _someValue(property)));
        }
    }
    created.setPath(_classPath(declared));
    server.createInstance(created);
}

// Writes every property that may be written; the clock is left alone.
void _fill(InProcessServer& server, const ClassDeclaration& declared) {
    if (declared.name == "TAVIRA_FRU") {
        _createFru(server, declared);
        return;
    }
    CIMInstance modified(make_String(declared.name));
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isWritable() && property.name != "LocalDateTime") {
            modified.addProperty(CIMProperty(make_String(property.name), _someValue(property)));
        }
    }
    if (modified.getPropertyCount() != 0) {
        modified.setPath(_classPath(declared));
        server.modifyInstance(modified, CIMPropertyList());
    }
}

// All that a machine says, empty records first.
void _look(const std::string& machine, Seen& seen) {
    SCOPED_TRACE(machine);
    const TestMachine place;
    std::filesystem::copy(machine, place.folder().path(),
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::copy_symlinks |
                              std::filesystem::copy_options::overwrite_existing);
    InProcessServer server(_load(), [](const std::string& location) {
        return TAVQZ_BINARY_DIR "/lib/lib" + location + ".so";
    });
    for (const bool isFilled : {false, true}) {
        for (const ClassDeclaration* declared : _servedClasses()) {
            if (isFilled) {
                _fill(server, *declared);
            }
            for (const CIMInstance& instance : server.enumerateInstances(_classPath(*declared))) {
                _check(*declared, instance, seen);
            }
        }
    }
}

}  // namespace

TEST(ModelAgreement, DeclaresWhatIsSentAndSendsWhatIsDeclared) {
    // From where the module finds the library that reads a machine's service processors.
    const ScopedWorkingFolder work(TAVQZ_BINARY_DIR "/lib/simulated/lib");
    Seen seen;
    for (const auto& machine :
         std::filesystem::directory_iterator(TAVQZ_SOURCE_DIR "/tests/machines")) {
        _look(machine.path().string(), seen);
    }
    for (const ClassDeclaration* declared : _servedClasses()) {
        if (seen.count(declared->name) == 0) {
            continue;  // no machine of ours has any
        }
        for (const PropertyDeclaration& property : declared->properties) {
            EXPECT_EQ(seen[declared->name].count(property.name), property.isPropagated ? 0U : 1U)
                << declared->name << "." << property.name;
        }
    }
    for (const char* always :
         {"TAVIRA_ComputerSystemDetails", "TAVIRA_Lease", "TAVIRA_Warranty",
          "TAVIRA_SerialNumberInformation", "TAVIRA_VigilPresent", "TAVIRA_VigilPostBiosVPD",
          "TAVIRA_VigilMachineLevelVPD", "TAVIRA_VigilSystemState", "TAVIRA_VigilWatchdog",
          "TAVIRA_VigilManagementProcessorVPD", "TAVIRA_VigilComponentVPD",
          "TAVIRA_PhysicalDiskDrive", "TAVIRA_RAIDController"}) {
        EXPECT_EQ(seen.count(always), 1U) << always;
    }
}
