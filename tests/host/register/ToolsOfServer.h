// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "BuildPaths.h"
#include "Registrar.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

// A server of which there are only the programs, which note how they are called. It is down, has
// the usual namespaces, and our main module among its providers.
class ToolsOfServer {
public:
    ToolsOfServer() : _home("PEGASUS_HOME", _folder.path()) {
        for (const char* tool :
             {"cimmof", "cimmofl", "cimcli", "cimconfig", "cimprovider", "cimserver"}) {
            std::filesystem::create_directories(_folder.file("bin"));
            std::filesystem::copy(TAVQZ_SOURCE_DIR "/tests/host/register/server-tool",
                                  _folder.file(std::string("bin/") + tool));
        }
        std::filesystem::create_directories(_folder.file("repository/root#PG_InterOp"));
        (void)_folder.write("lib/libAssetIDProvider.so", "");
        answer("cimconfig -l -c", "httpPort=5988\nproviderDir=lib\n");
    }

    const TemporaryFolder& folder() const { return _folder; }

    void start() const {
        (void)_folder.write("bin/up", "");
        answer("cimcli nc -di -n root/PG_InterOp", "PG_Provider\nPG_ProviderModule\n");
    }
    bool isUp() const { return _folder.contains("bin/up"); }

    void answer(const std::string& call, const std::string& text) const {
        (void)_folder.write("bin/answers/" + _fileName(call), text);
    }
    void fail(const std::string& call, int status) const {
        (void)_folder.write("bin/failures/" + _fileName(call), std::to_string(status));
    }

    // Those that change something, without the folder of the MOF files.
    QZ::Names changes() const {
        QZ::Names calls;
        std::istringstream lines(_folder.read("bin/calls"));
        for (std::string line; std::getline(lines, line);) {
            const bool isQuestion = line == "cimcli ns" || line == "cimserver --status" ||
                                    line == "cimprovider -l" || line.rfind("cimconfig ", 0) == 0 ||
                                    line.rfind("cimcli nc ", 0) == 0 ||
                                    line.rfind("cimcli eq ", 0) == 0;
            if (!isQuestion) {
                const std::size_t at = line.find(schemaFolder());
                calls.push_back(
                    at == std::string::npos ? line : line.erase(at, schemaFolder().size() + 1));
            }
        }
        return calls;
    }

    // The registrar's own model.
    static std::string schemaFolder() { return TAVQZ_SOURCE_DIR "/schema"; }

    QZ::Registrar registrar(const QZ::RegisterRequest& request = {}) {
        return {request, schemaFolder(), [this](const std::string& line) { said += line + "\n"; }};
    }

    std::string said;

private:
    static std::string _fileName(std::string call) {
        std::replace_if(
            call.begin(), call.end(),
            [](unsigned char character) {
                return std::isalnum(character) == 0 && character != '.';
            },
            '_');
        return call;
    }

    TemporaryFolder _folder;
    ScopedEnvironment _home;
};
