// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServerTools.h"

#include <paths.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "Error.h"

namespace QZ {

namespace fs = std::filesystem;

namespace {

std::string _environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool _isProgram(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

ServerTools::ServerTools(const std::string& compiler)
    : _compiler(compiler.empty() ? compiler : fs::absolute(compiler).lexically_normal().string()) {}

std::string ServerTools::path(const std::string& name) const {
    if (!_compiler.empty() && name == "cimmof") {
        return _compiler;
    }
    std::string folders = _compiler.empty() ? "" : fs::path(_compiler).parent_path().string() + ":";
    if (const std::string home = _environment("PEGASUS_HOME"); !home.empty()) {
        folders += home + "/bin:";
    }
    folders += _environment("PATH") + ":" + _PATH_STDPATH;
    std::istringstream list(folders);
    for (std::string folder; std::getline(list, folder, ':');) {
        const fs::path program = fs::path(folder) / name;
        if (!folder.empty() && _isProgram(program)) {
            return program.string();
        }
    }
    throw Error("There is no " + name +
                " here: install the OpenPegasus server, or name its cimmof with --cimmof");
}

}  // namespace QZ
