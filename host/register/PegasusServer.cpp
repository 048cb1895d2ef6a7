// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PegasusServer.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "Error.h"
#include "MachinePaths.h"
#include "ToolRun.h"

namespace QZ {

namespace fs = std::filesystem;

namespace {

constexpr const char* _interopNamespaces[] = {"root/PG_InterOp", "root/interop", "interop"};

Names _lines(const std::string& text) {
    Names lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line.erase(line.find_last_not_of(' ') + 1);
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

// What it prints where it succeeds.
Names _answer(const Command& command) {
    const ToolRun run = runTool(command);
    return run.status == 0 ? _lines(run.text) : Names();
}

// A path of the server's configuration; empty where nobody knows what it starts from.
std::string _configuredPath(const std::string& path) {
    const char* home = std::getenv("PEGASUS_HOME");
    if (path.empty() || fs::path(path).is_absolute()) {
        return path;
    }
    return home != nullptr ? (fs::path(home) / path).string() : "";
}

// The folder that a repository keeps a namespace in.
std::string _namespaceFolder(std::string name) {
    std::replace(name.begin(), name.end(), '/', '#');
    return name;
}

}  // namespace

bool contains(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

Names declaredNames(const std::string& mof, const std::string& keyword) {
    Names names;
    for (const std::string& line : _lines(mof)) {
        if (line.rfind(keyword + " ", 0) == 0) {
            const std::size_t start = keyword.size() + 1;
            names.push_back(line.substr(start, line.find_first_of(" :{", start) - start));
        }
    }
    return names;
}

bool PegasusServer::isUp() const {
    const ToolRun asked = runTool({_tools.path("cimcli"), "ns"});
    if (asked.status == 0) {
        return true;
    }
    if (runTool({_tools.path("cimserver"), "--status"}).status == 0) {
        throw Error("The CIM server runs and does not answer: " + asked.text +
                    ". Run this as root, or stop the server first: cimserver -s");
    }
    return false;
}

std::map<std::string, std::string> PegasusServer::configuration(bool isUp) const {
    std::map<std::string, std::string> values;
    for (const std::string& line : _answer({_tools.path("cimconfig"), "-l", isUp ? "-c" : "-p"})) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) {
            values[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return values;
}

std::string PegasusServer::interopNamespace(bool isUp) const {
    const fs::path repository = isUp ? "" : repositoryFolder();
    for (const char* name : _interopNamespaces) {
        std::error_code error;
        if (isUp ? contains(classes(name), "PG_ProviderModule")
                 : fs::is_directory(repository / _namespaceFolder(name), error)) {
            return name;
        }
    }
    return "";
}

Names PegasusServer::modules() const {
    return _answer({_tools.path("cimprovider"), "-l"});
}

Names PegasusServer::namespaces() const {
    return _answer({_tools.path("cimcli"), "ns"});
}

Names PegasusServer::classes(const std::string& name) const {
    return _answer({_tools.path("cimcli"), "nc", "-di", "-n", name});
}

Names PegasusServer::qualifiers(const std::string& name) const {
    const ToolRun run = runTool({_tools.path("cimcli"), "eq", "-n", name});
    return run.status == 0 ? declaredNames(run.text, "Qualifier") : Names();
}

std::string PegasusServer::providerFolder(bool isUp) const {
    return _configuredPath(configuration(isUp)["providerDir"]);
}

std::string PegasusServer::repositoryFolder() const {
    const std::string configured = configuration(false)["repositoryDir"];
    const std::string path = _configuredPath(configured.empty() ? "repository" : configured);
    return path.empty() ? MachinePaths::cimRepository() : path;
}

}  // namespace QZ
