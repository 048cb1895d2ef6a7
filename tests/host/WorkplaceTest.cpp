// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Workplace.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "BuildPaths.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

using namespace QZ;

namespace {

Workplace _find(const Request& request) {
    return findWorkplace(request, "/opt/tavqz/bin");
}

}  // namespace

TEST(Workplace, LooksBesideTheProgram) {
    const Workplace place = _find(Request());
    EXPECT_EQ(place.libraryFolder, "/opt/tavqz/lib");
    EXPECT_EQ(place.schemaFolder, "/opt/tavqz/share/tavqz/schema");
    EXPECT_EQ(place.runFolder, "/opt/tavqz/bin");
    EXPECT_EQ(place.root, "");
    EXPECT_EQ(place.dataFolder, "");
    EXPECT_EQ(place.moduleFile, "");
}

TEST(Workplace, MakesArgumentsAbsolute) {
    Request request;
    request.dataFolder = "data";
    request.moduleFile = "lib/m.so";
    request.schemaFolder = "./schema";
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(_find(request).dataFolder, here + "/data");
    EXPECT_EQ(_find(request).moduleFile, here + "/lib/m.so");
    EXPECT_EQ(_find(request).schemaFolder, here + "/schema");
}

TEST(Workplace, KeepsTheDataOfAnotherMachineWithIt) {
    TemporaryFolder machine;
    Request request;
    request.root = machine.path();
    EXPECT_EQ(_find(request).dataFolder, machine.file("var/lib/tavqz"));
    request.dataFolder = "/data";
    EXPECT_EQ(_find(request).dataFolder, "/data");
}

TEST(Workplace, StaysAwayFromAMachineThatBringsLibraries) {
    const ScopedEnvironment untrusted(HOST_LIBRARIES, "");
    TemporaryFolder machine;
    Request request;
    request.root = machine.path();
    std::filesystem::create_directory(machine.file("lib"));
    std::filesystem::create_directory(machine.file("run"));
    EXPECT_EQ(_find(request).runFolder, "/opt/tavqz/bin");
    EXPECT_EQ(_find(request).note, "") << "there is none that would be loaded";
    for (const char* library : {"lib/libtav_shrdevice.so", "lib/libtavxenprobe.so"}) {
        const std::string path = machine.write(library, "");
        EXPECT_EQ(_find(request).runFolder, "/opt/tavqz/bin");
        EXPECT_EQ(_find(request).note,
                  "The libraries in " + machine.file("lib") +
                      " are not loaded; with TAVQZ_HOST_LIBRARIES=1, which trusts them, they are.");
        std::filesystem::remove(path);
    }
}

TEST(Workplace, GoesToAMachineWhoseLibrariesAreTrusted) {
    const ScopedEnvironment trusted(HOST_LIBRARIES, "1");
    TemporaryFolder machine;
    Request request;
    request.root = machine.path();
    EXPECT_EQ(_find(request).runFolder, "/opt/tavqz/bin");
    std::filesystem::create_directory(machine.file("lib"));
    EXPECT_EQ(_find(request).runFolder, machine.file("lib"));
    std::filesystem::create_directory(machine.file("run"));
    machine.write("lib/libtav_shrdevice.so", "");
    EXPECT_EQ(_find(request).runFolder, machine.file("run"));
    EXPECT_EQ(_find(request).note, "");
}

TEST(Workplace, GoesToTheSimulatedLibraryForAMachineThatDescribesAServiceProcessor) {
    const TemporaryFolder product;
    TemporaryFolder machine;
    Request request;
    request.root = machine.path();
    machine.write("etc/tavqz/service-processor.txt", "");
    EXPECT_EQ(findWorkplace(request, product.file("bin")).runFolder, product.file("bin"))
        << "the library is not installed";
    std::filesystem::create_directories(product.file("lib/simulated/lib"));
    EXPECT_EQ(findWorkplace(request, product.file("bin")).runFolder,
              product.file("lib/simulated/lib"));
    std::filesystem::create_directory(machine.file("lib"));
    EXPECT_EQ(findWorkplace(request, product.file("bin")).runFolder,
              product.file("lib/simulated/lib"));
    const ScopedEnvironment trusted(HOST_LIBRARIES, "1");
    EXPECT_EQ(findWorkplace(request, product.file("bin")).runFolder, machine.file("lib"))
        << "its own libraries come first";
}

TEST(Workplace, RefusesARootThatIsNoFolder) {
    TemporaryFolder folder;
    Request request;
    request.root = folder.file("missing");
    EXPECT_THROW(_find(request), UsageError);
    request.root = folder.write("file", "");
    EXPECT_THROW(_find(request), UsageError);
}

TEST(Workplace, KnowsTheProgramsOwnFolder) {
    EXPECT_EQ(executableFolder(), std::filesystem::canonical(TAVQZ_BINARY_DIR "/tests").string());
}
