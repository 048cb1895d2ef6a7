// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Registrar.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "Error.h"

namespace QZ {

namespace fs = std::filesystem;

namespace {

constexpr const char* _namespace = "root/tavqz";
constexpr const char* _baseClasses = "cim-base.mof";

constexpr const char* _adviceToLoad =
    "Run this as the server's administrator. Where classes of another model are in the way, take "
    "them away first: tavqz register --remove";
constexpr const char* _adviceToRepeat = "Run this again when the server's clients are done";
constexpr const char* _adviceToStart = "Start the server, and run this again";

std::string _read(const std::string& path) {
    std::ifstream stream(path);
    if (!stream) {
        throw Error("Cannot read " + path + ": name the folder of the model with --schema");
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

Names _reversed(Names names) {
    std::reverse(names.begin(), names.end());
    return names;
}

// A server that runs for the life of this object, for the programs of this machine alone.
class BriefServer {
public:
    BriefServer(Steps& steps, const ServerTools& tools) : _steps(steps), _tools(tools) {
        _steps.take(
            "Start the server for this, without a port on the network",
            {tools.path("cimserver"), "enableHttpConnection=false", "enableHttpsConnection=false"},
            _adviceToStart);
    }
    ~BriefServer() {
        try {
            _steps.take("Stop the server", {_tools.path("cimserver"), "-s"}, "Stop it by hand");
        } catch (const Error& error) {
            _steps.say(error.what());
        }
    }
    BriefServer(const BriefServer&) = delete;
    BriefServer& operator=(const BriefServer&) = delete;

private:
    Steps& _steps;
    const ServerTools& _tools;
};

}  // namespace

struct Registrar::Module {
    const char* name;
    const char* library;
    const char* classes;
    const char* registration;

    std::string file() const { return std::string("lib") + library + ".so"; }
};

const Registrar::Module Registrar::_modules[] = {
    {"AssetIDProviderModule", "AssetIDProvider", "tavqz.mof", "tavqz-registration.mof"},
    {"TavqzRaidProviderModule", "TavqzRaidProvider", "tavqz-raid.mof",
     "tavqz-raid-registration.mof"},
};

// What there is to remove.
struct Registrar::Present {
    Names modules;
    Names classes;
    Names qualifiers;
    bool hasNamespace = true;
};

Registrar::Registrar(const RegisterRequest& request, std::string schemaFolder,
                     const Steps::Say& say)
    : _request(request),
      _schemaFolder(std::move(schemaFolder)),
      _tools(request.compiler),
      _server(_tools),
      _steps(request.isDryRun, say) {}

std::string Registrar::_mof(const char* file) const {
    return (fs::path(_schemaFolder) / file).string();
}

std::string Registrar::_interopNamespace(bool isUp) const {
    std::string name = _request.interopNamespace.empty() ? _server.interopNamespace(isUp)
                                                         : _request.interopNamespace;
    if (name.empty()) {
        throw Error("The server's interop namespace is not found: name it with --namespace");
    }
    return name;
}

// All that can be looked for, for nobody says in which folder.
std::vector<const Registrar::Module*> Registrar::_installedModules(bool isUp) const {
    const std::string folder =
        _request.providerFolder.empty() ? _server.providerFolder(isUp) : _request.providerFolder;
    std::vector<const Module*> installed;
    for (const Module& module : _modules) {
        std::error_code error;
        if (folder.empty() ? &module == _modules
                           : fs::exists(folder + "/" + module.file(), error)) {
            installed.push_back(&module);
        } else if (&module == _modules) {
            throw Error("The server's folder of providers, " + folder + ", has no " +
                        module.file() + ": copy it there, or name the folder with --provider-dir");
        }
    }
    return installed;
}

void Registrar::_load(const char* compiler, const std::string& title, const std::string& name,
                      const char* file, bool isUpdate) {
    Command command = {_tools.path(compiler)};
    if (isUpdate) {
        command.emplace_back("-uc");
    }
    command.insert(command.end(), {"-n", name, _mof(file)});
    _steps.take(title, command, _adviceToLoad);
}

void Registrar::_addOnline(const std::vector<const Module*>& modules, const std::string& interop) {
    const Names registered = _server.modules();
    for (const Module* module : modules) {
        if (contains(registered, module->name)) {
            _removeModule(*module);
        }
    }
    const Names there = _server.classes(_namespace);
    const Names base = declaredNames(_read(_mof(_baseClasses)), "class");
    if (std::any_of(base.begin(), base.end(),
                    [&there](const std::string& name) { return !contains(there, name); })) {
        _load("cimmof", "Load the standard classes that root/tavqz lacks", _namespace, _baseClasses,
              false);
    }
    for (const Module* module : modules) {
        _load("cimmof", std::string("Load the classes of ") + module->file(), _namespace,
              module->classes, true);
        _load("cimmof", std::string("Register ") + module->file(), interop, module->registration,
              false);
    }
    _steps.take("Ask for an answer",
                {_tools.path("cimcli"), "ni", "TAVIRA_Lease", "-n", _namespace},
                "The module is registered and does not answer. Was it built for this server? The "
                "server's log says more");
}

void Registrar::_addOffline(const std::vector<const Module*>& modules, const std::string& interop) {
    Command compiler = {_tools.path("cimmofl"), "-W"};
    const fs::path repository = _server.repositoryFolder();
    const auto configuration = _server.configuration(false);
    if (configuration.count("repositoryDir") != 0) {
        compiler.insert(compiler.end(), {"-R", repository.parent_path().string(), "-N",
                                         repository.filename().string()});
    }
    const auto binary = configuration.find("enableBinaryRepository");
    if (binary != configuration.end() && binary->second == "true") {
        compiler.insert(compiler.end(), {"-M", "BIN"});
    }
    const auto load = [this, &compiler](const std::string& title, const char* name,
                                        const char* file, bool isUpdate) {
        Command command = compiler;
        if (isUpdate) {
            command.emplace_back("-uc");
        }
        command.insert(command.end(), {"-n", name, _mof(file)});
        return _steps.take(title, command, _adviceToLoad);
    };
    load("Load the standard classes that root/tavqz lacks", _namespace, _baseClasses, false);
    bool isRepeated = false;
    for (const Module* module : modules) {
        load(std::string("Load the classes of ") + module->file(), _namespace, module->classes,
             true);
        // It prints nothing but what it leaves as it is.
        isRepeated |= !load(std::string("Register ") + module->file(), interop.c_str(),
                            module->registration, false)
                           .empty();
    }
    if (isRepeated) {
        _steps.say("An earlier registration is there, which only the running server replaces");
        const BriefServer server(_steps, _tools);
        _addOnline(modules, interop);
    }
}

void Registrar::add() {
    const bool isUp = _server.isUp();
    const std::string interop = _interopNamespace(isUp);
    const std::vector<const Module*> modules = _installedModules(isUp);
    if (isUp) {
        _addOnline(modules, interop);
    } else {
        _addOffline(modules, interop);
    }
}

void Registrar::_removeModule(const Module& module) {
    const std::string tool = _tools.path("cimprovider");
    _steps.take(std::string("Have the server let go of ") + module.file(),
                {tool, "-d", "-m", module.name}, _adviceToRepeat);
    _steps.take("Take its registration away", {tool, "-r", "-m", module.name}, _adviceToRepeat);
}

// Of a server that is not asked, all that there can be.
Registrar::Present Registrar::_present(bool isUp) const {
    Present present;
    if (isUp) {
        present.modules = _server.modules();
        present.classes = _server.classes(_namespace);
        present.qualifiers = _server.qualifiers(_namespace);
        present.hasNamespace = contains(_server.namespaces(), _namespace);
        return present;
    }
    for (const Module& module : _modules) {
        present.modules.emplace_back(module.name);
        const Names classes = declaredNames(_read(_mof(module.classes)), "class");
        present.classes.insert(present.classes.end(), classes.begin(), classes.end());
    }
    const std::string base = _read(_mof(_baseClasses));
    const Names classes = declaredNames(base, "class");
    present.classes.insert(present.classes.end(), classes.begin(), classes.end());
    present.qualifiers = declaredNames(base, "Qualifier");
    return present;
}

void Registrar::_removeNamespace(const Present& present) {
    const std::string tool = _tools.path("cimcli");
    for (const std::string& name : present.qualifiers) {
        _steps.take("Delete the qualifier " + name, {tool, "dq", name, "-n", _namespace},
                    _adviceToRepeat);
    }
    _steps.take("Delete the namespace", {tool, "di", "__Namespace.Name=\"tavqz\"", "-n", "root"},
                _adviceToRepeat);
}

void Registrar::_removeEverything(const Present& present) {
    Names ours;
    for (const Module& module : _modules) {
        if (contains(present.modules, module.name)) {
            _removeModule(module);
        }
        const Names classes = declaredNames(_read(_mof(module.classes)), "class");
        ours.insert(ours.end(), classes.begin(), classes.end());
    }
    const Names base = declaredNames(_read(_mof(_baseClasses)), "class");
    const auto foreign = std::find_if(present.classes.begin(), present.classes.end(),
                                      [&ours, &base](const std::string& name) {
                                          return !contains(ours, name) && !contains(base, name);
                                      });
    const bool isShared = foreign != present.classes.end();
    Names doomed = isShared ? Names() : base;
    doomed.insert(doomed.end(), ours.begin(), ours.end());
    // Subclasses first.
    for (const std::string& name : _reversed(doomed)) {
        if (contains(present.classes, name)) {
            _steps.take("Delete the class " + name,
                        {_tools.path("cimcli"), "dc", name, "-n", _namespace}, _adviceToRepeat);
        }
    }
    if (isShared) {
        _steps.say("root/tavqz stays, with classes that are not ours, such as " + *foreign);
    } else if (present.hasNamespace) {
        _removeNamespace(present);
    }
}

void Registrar::remove() {
    if (_server.isUp()) {
        _removeEverything(_present(true));
        return;
    }
    const BriefServer server(_steps, _tools);
    _removeEverything(_present(!_steps.isDryRun()));
}

}  // namespace QZ
