// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SerialNumberInstances.h"

#include <iterator>
#include <string>

#include "PartInfoFactory.h"
#include "RecordInstance.h"

namespace QZ {
namespace {

template <void (PartInfo::*Get)(std::string&) const>
std::string _text(const PartInfo& part) {
    std::string text;
    (part.*Get)(text);
    return text;
}

std::string _identifier(const PartInfo& part) {
    return "TAVIRA|CorvanaAgent|SerialNumberInformation " + _text<&PartInfo::getTag>(part);
}

constexpr RecordProperty<PartInfo> _properties[] = {
    readOnly<PartInfo, _identifier>("Identifier"),
    readOnly<PartInfo, _text<&PartInfo::getManufacturer>>("Manufacturer"),
    readOnly<PartInfo, _text<&PartInfo::getModel>>("Model"),
    readOnly<PartInfo, _text<&PartInfo::getSerialNumber>>("SerialNumber"),
    readOnly<PartInfo, _text<&PartInfo::getVersion>>("Version"),
    readOnly<PartInfo, _text<&PartInfo::getTag>>("Name"),
    // A second name for it, which clients know.
    readOnly<PartInfo, _text<&PartInfo::getTag>>("Tag"),
};

constexpr const char* _keys[] = {"Identifier"};

// The machine's parts for the length of a request, whose handler may throw.
class Parts {
public:
    Parts() : _list(PartInfoFactory::newList()) {}
    ~Parts() { PartInfoFactory::deleteList(_list); }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    const std::list<PartInfo*>& list() const { return _list; }

private:
    std::list<PartInfo*> _list;
};

}  // namespace

constexpr RecordClass<PartInfo> serialNumberClass = {_properties, std::size(_properties), _keys,
                                                     std::size(_keys)};

void deliverParts(const std::list<PartInfo*>& parts, const Pegasus::CIMObjectPath& classPath,
                  Pegasus::InstanceResponseHandler& handler) {
    static const InstanceBuilder<PartInfo> builder(serialNumberClass);
    for (const PartInfo* part : parts) {
        handler.deliver(builder.build(*part, classPath));
    }
}

void deliverSerialNumbers(const Pegasus::CIMObjectPath& classPath,
                          Pegasus::InstanceResponseHandler& handler) {
    const Parts parts;
    deliverParts(parts.list(), classPath, handler);
}

}  // namespace QZ
