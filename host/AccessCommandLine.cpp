// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AccessCommandLine.h"

#include <CLI/CLI.hpp>

namespace QZ {

void addAccessOptions(CLI::App& serve, ServeRequest& request) {
    CLI::Option* const user = serve.add_option("--user", request.user, "Who may ask");
    user->type_name("NAME")->capture_default_str();
    CLI::Option* const password =
        serve.add_option("--password-file", request.passwordFile,
                         "The file whose first line is the password; else one is made");
    password->type_name("FILE");
    AccessRequest& access = request.access;
    CLI::Option* const file = serve.add_option("--credentials", access.credentialsFile,
                                               "The file of users that \"passwd\" keeps may ask");
    file->type_name("FILE")->excludes(user)->excludes(password);
    CLI::Option* const pam = serve.add_flag(
        "--pam", access.usesPam, "The system's users may ask, with what their groups let them do");
    pam->excludes(user)->excludes(password)->excludes(file);
    serve
        .add_option("--pam-folder", access.pamFolder,
                    "The folder of PAM's file \"tavqz\"; else the system's")
        ->type_name("DIR")
        ->needs(pam);
    const auto group = [&serve](const char* option, std::string& name, const char* description) {
        serve.add_option(option, name, description)->type_name("GROUP")->capture_default_str();
    };
    group("--readers", access.readers, "The group whose members may read");
    group("--writers", access.writers, "The group whose members may write asset data");
    group("--subscribers", access.subscribers, "The group whose members may subscribe to alerts");
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
