// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "PegasusServer.h"
#include "RegisterRequest.h"
#include "ServerTools.h"
#include "Steps.h"

namespace QZ {

// Makes the provider modules known to this machine's OpenPegasus server, and takes them away again,
// with the server's own programs. Says each step. Throws Error where one fails, which tells what to
// do; what was done until then stays, and both can be repeated.
class Registrar {
public:
    // The folder is that of the model's MOF files.
    Registrar(const RegisterRequest& request, std::string schemaFolder, const Steps::Say& say);

    // The standard classes that the namespace lacks, our classes, and the registration, which
    // replaces an earlier one. A module whose library the server has no copy of is left out; our
    // main one must be there. A server that is down stays so.
    void add();

    // The registration, our classes, and the namespace, unless others use it. A server that is down
    // is started meanwhile, without a port on the network.
    void remove();

private:
    struct Module;
    struct Present;

    std::string _mof(const char* file) const;
    std::string _interopNamespace(bool isUp) const;
    std::vector<const Module*> _installedModules(bool isUp) const;
    Present _present(bool isUp) const;

    void _load(const char* compiler, const std::string& title, const std::string& name,
               const char* file, bool isUpdate);
    void _addOnline(const std::vector<const Module*>& modules, const std::string& interop);
    void _addOffline(const std::vector<const Module*>& modules, const std::string& interop);
    void _removeModule(const Module& module);
    void _removeEverything(const Present& present);
    void _removeNamespace(const Present& present);

    static const Module _modules[];

    RegisterRequest _request;
    std::string _schemaFolder;
    ServerTools _tools;
    PegasusServer _server;
    Steps _steps;
};

}  // namespace QZ
