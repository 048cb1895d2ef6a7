// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ModuleServer.h"

#include <filesystem>

namespace QZ {

namespace {

std::string _moduleFile(const Workplace& place, const std::string& location) {
    const auto registered = [&](const std::string& name) {
        return place.libraryFolder + '/' + name;
    };
    const std::string library = "lib" + location + ".so";
    const std::string given = std::filesystem::path(place.moduleFile).filename().string();
    // One that is given has the place of the module of its name, or of all where none has that.
    std::error_code error;
    const bool isOfAnother = given != library && std::filesystem::exists(registered(given), error);
    return place.moduleFile.empty() || isOfAnother ? registered(library) : place.moduleFile;
}

}  // namespace

std::unique_ptr<InProcessServer> makeModuleServer(const Workplace& place, ModuleBinding binding) {
    return std::make_unique<InProcessServer>(
        place.schemaFolder,
        [place](const std::string& location) { return _moduleFile(place, location); }, binding);
}

}  // namespace QZ
