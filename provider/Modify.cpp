// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "AssetIDProvider.h"
#include "Boundary.h"
#include "ClassNames.h"
#include "RecordInstance.h"

namespace QZ {

using namespace Pegasus;

namespace {

// The record saves itself at the end, and says so where it cannot: the client must know.
template <class Record, const RecordClass<Record>& recordClass>
void _modifyRecord(const CIMInstance& modified) {
    Record record;
    applyInstance(recordClass, modified, record);
}

void _refuse(const CIMInstance&) {
    throw CIMException(CIM_ERR_NOT_SUPPORTED, String());
}

const struct {
    const String& className;
    void (*modify)(const CIMInstance& modified);
} _dispatch[] = {
    {ClassName::Lease, _modifyRecord<Lease, leaseClass>},
    {ClassName::Warranty, _modifyRecord<Warranty, warrantyClass>},
    {ClassName::ComputerSystemDetails,
     _modifyRecord<ComputerSystemDetails, computerSystemDetailsClass>},
    {ClassName::SerialNumberInformation, _refuse},
};

}  // namespace

void AssetIDProvider::modifyInstance(const OperationContext&, const CIMObjectPath& instanceName,
                                     const CIMInstance& modifiedInstance, const Boolean,
                                     const CIMPropertyList&, ResponseHandler& handler) {
    atBoundary([&] {
        const String& className = instanceName.getClassName().getString();
        for (const auto& row : _dispatch) {
            if (String::equalNoCase(className, row.className)) {
                handler.processing();
                row.modify(modifiedInstance);
                handler.complete();
                return;
            }
        }
        throw CIMException(CIM_ERR_INVALID_CLASS, String());
    });
}

}  // namespace QZ
