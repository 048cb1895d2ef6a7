// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <set>
#include <string>
#include <vector>

#include "DataFile.h"

namespace QZ {

// CIM instances with their paths, kept as text (ObjectText) that people may read and mend: lines
// that begin with "//" are comments, and what is not changed stays as written. A key that is a text
// is the property's where the path has another. An instance of which a part is damaged is not
// there, nor is a second one of the same keys; those around it are.
//
// An instance is known by its class and its keys alone: clients write host and namespace in many
// ways. Used by one thread at a time.
class CimObjectFile : public DataFile {
public:
    using DataFile::DataFile;

    // The instances of the path's class, in the order in which they were created. They are the
    // caller's once the file is closed; what is done to them before does not reach the disk. Throws
    // Error when not open to read.
    std::vector<Pegasus::CIMInstance> enumerateInstances(
        const Pegasus::CIMObjectPath& classPath) const;

    // These change the file once it is closed; they throw Error when it is not open to write, and
    // CIMException with a message that names the keys.
    //
    // The keys of an instance are those of its path; CIM_ERR_INVALID_PARAMETER where one of them
    // has no property of its name, or that is null.
    //
    // CIM_ERR_ALREADY_EXISTS where there is one with these keys.
    void createInstance(const Pegasus::CIMInstance& instance);
    // Replaces it whole, in its place. CIM_ERR_NOT_FOUND where there is none.
    void modifyInstance(const Pegasus::CIMInstance& instance);
    // CIM_ERR_NOT_FOUND where there is none.
    void deleteInstance(const Pegasus::CIMObjectPath& path);

protected:
    bool _load(const std::string& text) override;
    std::string _compose() const override;
    void _forget() override;

private:
    struct Entry {
        std::string comment;  // the lines above it
        std::string text;
        Pegasus::CIMInstance instance;
    };

    using Identities = std::set<std::set<std::string>>;

    bool _addEntry(std::string comment, std::string text, Identities& known);
    std::vector<Entry>::iterator _find(const Pegasus::CIMObjectPath& path);

    std::vector<Entry> _entries;
    std::string _end;  // the comment below the last
};

}  // namespace QZ
