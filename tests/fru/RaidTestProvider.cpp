// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// A provider module that serves RAID disks and controllers out of the folder that TAVQZ_TEST_RAID
// names: the instances of its file "raid.dat", as CimObjectFile keeps them. While there is a file
// "fail-CLASS", asking for that class fails once all its instances are delivered.

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "CimObjectFile.h"
#include "CimText.h"
#include "Text.h"

using namespace Pegasus;

namespace {

[[noreturn]] void _refuse() {
    throw CIMException(CIM_ERR_NOT_SUPPORTED, "read-only");
}

class RaidTestProvider : public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle&) override {}
    void terminate() override { delete this; }

    void enumerateInstances(const OperationContext&, const CIMObjectPath& path, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override {
        const std::string folder = std::getenv("TAVQZ_TEST_RAID");
        handler.processing();
        QZ::CimObjectFile file(QZ::make_wstring(folder + "/raid.dat"));
        file.open(1);
        for (const CIMInstance& instance : file.enumerateInstances(path))
            handler.deliver(instance);
        if (std::filesystem::exists(folder + "/fail-" +
                                    QZ::make_string(path.getClassName().getString())))
            throw CIMException(CIM_ERR_FAILED, "as the test wants it");
        handler.complete();
    }

    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler&) override {
        _refuse();
    }
    void getInstance(const OperationContext&, const CIMObjectPath&, const Boolean, const Boolean,
                     const CIMPropertyList&, InstanceResponseHandler&) override {
        _refuse();
    }
    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {
        _refuse();
    }
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {
        _refuse();
    }
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {
        _refuse();
    }
};

}  // namespace

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& name) {
    return String::equalNoCase(name, "RaidTestProvider") ? new RaidTestProvider : nullptr;
}
