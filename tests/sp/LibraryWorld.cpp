// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LibraryWorld.h"
#include "BuildPaths.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>

void addLogItem(char* tag, char* text) {
    LibraryWorld::current().log.push_back(std::string(tag) + "|" + text);
}

int entryPointCalled(const char* name) {
    LibraryWorld& world = LibraryWorld::current();
    world.calls.emplace_back(name);
    const auto status = world.statuses.find(name);
    return status == world.statuses.end() ? 0 : status->second;
}

int entryPointCalledWithBus(const char* name, const void* bus) {
    LibraryWorld::current().bus = bus;
    return entryPointCalled(name);
}

LibraryWorld& LibraryWorld::current() {
    static LibraryWorld world;
    return world;
}

namespace {

template <std::size_t Count>
void _unbind(interfaceStruct (&table)[Count]) {
    for (interfaceStruct& row : table) {
        row.funcPtr = nullptr;
    }
}

std::string _workingFolder() {
    char* folder = getcwd(nullptr, 0);
    std::string result = folder;
    free(folder);
    return result;
}

}  // namespace

InVariant::InVariant(const std::string& variant) : _home(_workingFolder()) {
    LibraryWorld::current() = LibraryWorld();
    _unbind(fpSharedCommonFuncs);
    _unbind(fpSharedCommFuncs);
    _unbind(fpSharedLibFuncs);
    const std::string folder = TAVQZ_BINARY_DIR "/tests/sp/" + variant + "/run";
    EXPECT_EQ(chdir(folder.c_str()), 0) << folder;
    testing::internal::CaptureStdout();
}

InVariant::~InVariant() {
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(chdir(_home.c_str()), 0);
}

std::string InVariant::printed() {
    std::string text = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
    return text;
}

int closeEveryHandle(const std::string& name) {
    const std::string path = "../lib/" + name;
    int closed = 0;
    while (void* handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD)) {
        dlclose(handle);
        dlclose(handle);
        ++closed;
    }
    return closed;
}

bool isLoaded(const std::string& name) {
    void* handle = dlopen(("../lib/" + name).c_str(), RTLD_LAZY | RTLD_NOLOAD);
    return handle != nullptr && dlclose(handle) == 0;
}

std::string boundText(const std::string& operation, const std::string& library,
                      const interfaceStruct& row) {
    const auto value = reinterpret_cast<std::intptr_t>(row.funcPtr);
    return operation + "|Function [" + row.name + "] for library [" + library +
           "] load succeeded and pointer [" + std::to_string(value) + "]";
}
