// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// The programs that come with an OpenPegasus server: cimmof, cimmofl, cimcli, cimconfig,
// cimprovider and cimserver.
class ServerTools {
public:
    // With a compiler, the cimmof at that path and the others beside it come first; then those of
    // PEGASUS_HOME, of PATH, and where administrators' programs are.
    explicit ServerTools(const std::string& compiler);

    // The path of a program. Throws Error where there is none.
    std::string path(const std::string& name) const;

private:
    std::string _compiler;
};

}  // namespace QZ
