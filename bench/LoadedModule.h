// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <string>

// The built module in this process, and its asset provider, until the end of the program. Its data
// folder is a fresh one below the build folder, on whatever disk that is.
class LoadedModule {
public:
    static LoadedModule& get();

    Pegasus::CIMInstanceProvider& provider() { return *_provider; }
    const std::string& dataFolder() const { return _dataFolder; }

    // One enumeration of a class; the number of instances.
    unsigned enumerate(const Pegasus::CIMObjectPath& classPath);
    static unsigned enumerate(Pegasus::CIMInstanceProvider& provider,
                              const Pegasus::CIMObjectPath& classPath);

private:
    LoadedModule();

    std::string _dataFolder;
    Pegasus::CIMInstanceProvider* _provider = nullptr;
};

// Where the module of this build lies.
std::string modulePath();

// Loads the library and makes its provider of that name, as a server does. Throws
// std::runtime_error.
Pegasus::CIMInstanceProvider* loadProvider(const char* name = "AssetIDProvider");
