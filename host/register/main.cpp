// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
//
// The command where the module is built for OpenPegasus: all it does is to register that module.

#include <iostream>

#include "CommandLine.h"
#include "Product.h"
#include "RegisterOptions.h"
#include "Registrar.h"
#include "Text.h"
#include "Workplace.h"

using namespace QZ;

namespace {

int _run(const Request& request) {
    const Workplace place = findWorkplace(request, executableFolder());
    Registrar registrar(request.registration, place.schemaFolder,
                        [](const std::string& line) { std::cout << line << std::endl; });
    if (request.registration.isRemoval) {
        registrar.remove();
    } else {
        registrar.add();
    }
    return EXIT_OK;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Request request;
        CLI::App app("Registers the asset provider in this machine's OpenPegasus server.", "tavqz");
        app.require_subcommand(1);
        app.set_version_flag("--version", "tavqz " + make_string(Product::getVersion()));
        CLI::App* command = app.add_subcommand("register", REGISTER_DESCRIPTION);
        addRegisterOptions(*command, request.registration);
        command->add_option("--schema", request.schemaFolder, "The folder of the model's MOF files")
            ->type_name("DIR");
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return app.exit(error) == 0 ? EXIT_OK : EXIT_USAGE;
        }
        return _run(request);
    } catch (const std::exception& error) {
        std::cerr << "tavqz: " << error.what() << "\n";
        return EXIT_FAILED;
    }
}
