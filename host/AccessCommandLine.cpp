// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AccessCommandLine.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <iterator>

#include "ServeKeys.h"

namespace QZ {

void addServeOptions(CLI::App& serve, ServeArguments& arguments) {
    serve
        .add_option("--config", arguments.configFile,
                    "The file of the same options, \"key = value\" a line; those given here count")
        ->type_name("FILE");
    for (const ServeKey& key : serveKeys()) {
        if (key.isGlobal) {
            continue;
        }
        const std::string option = "--" + key.name;
        std::vector<std::string>& values = arguments.values[key.name];
        if (key.kind == ServeKey::Switch) {
            serve.add_flag_function(
                option, [&values](std::int64_t count) { values = {count > 0 ? "yes" : "no"}; },
                key.description);
            continue;
        }
        CLI::Option* const added = serve.add_option(option, values, key.description);
        added->type_name(key.type)->allow_extra_args(false)->default_str(key.standard);
        if (!key.isList) {
            added->expected(1);
        }
    }
}

void checkServeOptions(ServeArguments& arguments) {
    const std::string folder = std::filesystem::current_path().string();
    for (auto at = arguments.values.begin(); at != arguments.values.end();) {
        auto& [name, values] = *at;
        const ServeKey& key = *findServeKey(name);
        try {
            for (std::string& value : values) {
                value = checkedServeValue(key, value, folder);
            }
        } catch (const UsageError& error) {
            throw CLI::ValidationError("--" + name, error.what());
        }
        at = values.empty() ? arguments.values.erase(at) : std::next(at);
    }
    try {
        if (arguments.configFile.empty()) {
            (void)makeServeRequest(arguments.values);
        } else {
            arguments.configFile = (std::filesystem::path(folder) / arguments.configFile).string();
        }
    } catch (const UsageError& error) {
        throw CLI::ValidationError("serve", error.what());
    }
}

void addPasswdOptions(CLI::App& passwd, PasswdRequest& request) {
    passwd.add_option("USER", request.user, "The user")->required();
    passwd
        .add_option("--file", request.file,
                    "The file of users; else \"credentials\" in the folder of the asset data")
        ->type_name("FILE");
    CLI::Option* const rights =
        passwd.add_option("--rights", request.rights,
                          "What the user may do: read, write and subscribe, with commas between "
                          "them; else what it is, at first read");
    rights->type_name("RIGHTS");
    passwd.add_flag("--delete", request.isDeletion, "Forget the user")->excludes(rights);
    passwd.footer(
        "The password is asked for, or is the first line of standard input; it is never an\n"
        "argument, which others could see.\n\nExamples:\n"
        "  tavqz passwd --rights read,write anna\n"
        "  tavqz passwd --delete anna");
}

}  // namespace QZ
