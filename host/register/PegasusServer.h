// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "ServerTools.h"

namespace QZ {

using Names = std::vector<std::string>;

bool contains(const Names& names, const std::string& name);

// What a text in MOF declares with the keyword, "class" or "Qualifier", in its order. Each stands
// at the start of a line.
Names declaredNames(const std::string& mof, const std::string& keyword);

// What this machine's OpenPegasus server tells of itself. Nothing here changes it. Each call runs
// a program; they throw Error where that cannot be.
class PegasusServer {
public:
    explicit PegasusServer(const ServerTools& tools) : _tools(tools) {}

    // Throws Error where it runs and does not answer: nobody may touch its files then.
    bool isUp() const;

    // Of a server that is down only what is not as it was built.
    std::map<std::string, std::string> configuration(bool isUp) const;

    // The namespace that it keeps registrations in; empty where it is not found.
    std::string interopNamespace(bool isUp) const;

    // Of a server that is up. A namespace that is not there has nothing.
    Names modules() const;
    Names namespaces() const;
    Names classes(const std::string& name) const;
    Names qualifiers(const std::string& name) const;

    // The folder of its providers; empty where it is not known.
    std::string providerFolder(bool isUp) const;

    // The folder of its repository.
    std::string repositoryFolder() const;

private:
    const ServerTools& _tools;
};

}  // namespace QZ
