// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cxxabi.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "tavqz/AccessHelpers.h"

namespace {

std::vector<std::string> heard;

}  // namespace

// This program's own log, which it exports.
void addLogItem(char* tag, char* text) {
    heard.push_back(std::string(tag) + "|" + text);
}

namespace {

const char* const module = TAVQZ_BINARY_DIR "/tests/sp/module/sp_access_module.so";

std::string demangled(const std::string& symbol) {
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr);
    std::string result = text == nullptr ? symbol : text;
    std::free(text);
    return result;
}

// As the loader sees it, C++ names demangled, without what the compiler and the standard
// library bring along.
std::set<std::string> exportedSymbols() {
    std::ifstream lines(TAVQZ_BINARY_DIR "/tests/sp/module/exports.txt");
    EXPECT_TRUE(lines.is_open());
    std::set<std::string> symbols;
    for (std::string line; std::getline(lines, line);) {
        const std::string name = demangled(line.substr(0, line.find(' ')));
        const bool describesType = name.rfind("typeinfo ", 0) == 0 || name.rfind("vtable ", 0) == 0;
        // Those of the VPD record have a test of their own.
        const bool isOfVpd = name.rfind("VPD::", 0) == 0;
        if (!describesType && !isOfVpd && name.find("std::") == std::string::npos &&
            name.find("__") == std::string::npos) {
            symbols.insert(name);
        }
    }
    return symbols;
}

// Everything that a library in the field may resolve from the module.
const std::set<std::string> interfaceSymbols{
    "IncrementLibraryUsageCount",
    "StartThread",
    "SystemEventRecord::SystemEventRecord(ipmiEvent*)",
    "SystemEventRecord::getData0String[abi:cxx11]() const",
    "SystemEventRecord::getData1String[abi:cxx11]() const",
    "SystemEventRecord::getEventReadingCodeString[abi:cxx11]() const",
    "SystemEventRecord::getEventString[abi:cxx11]() const",
    "SystemEventRecord::getRawDataString[abi:cxx11]() const",
    "SystemEventRecord::getSensorTypeCodeString[abi:cxx11]() const",
    "VpdLogItem",
    "_httoi",
    "addLogItem",
    "bytesToString",
    "cBusComm::closeInterfaceLink()",
    "cBusComm::openInterfaceLink(char*, interfaceStruct*, int, bool)",
    "cRegistry::CheckRegTree(char*)",
    "cRegistry::CheckRegTreeLineItem(char*)",
    "cRegistry::CloseRegData()",
    "cRegistry::GetRegInfo(char*, char*, unsigned long*, unsigned char*)",
    "cRegistry::UpdateRegData()",
    "cRegistry::UpdateRegInfo(char*, char*, char*)",
    "cRegistry::WriteRegInfo(char*, char*)",
    "cRegistry::_check(char const*, char const*) const",
    "cRegistry::_httoi(char const*, int)",
    "cRegistry::cRegistry(char*)",
    "cRegistry::~cRegistry()",
    "cSPCommonInt::cSPCommonInt()",
    "cSPCommonInt::closeCommLink()",
    "cSPCommonInt::closeLibLink()",
    "cSPCommonInt::getCommonCommDevice(cBusComm**)",
    "cSPCommonInt::getCommonDevice()",
    "cSPCommonInt::getCommonLibDevice(cBusComm*, cDeviceLib**)",
    "cSPCommonInt::getLibDevice(cBusComm*, cDeviceLib**)",
    "cSPCommonInt::initializeCommLink()",
    "cSPCommonInt::initializeLibLink(char*)",
    "cSPCommonInt::~cSPCommonInt()",
    "cThreadLib::cThreadLib()",
    "cThreadLib::releaseHandle()",
    "cThreadLib::sendEvent()",
    "cThreadLib::threadClose()",
    "cThreadLib::threadStart(void* (*)(void*), void*)",
    "cThreadLib::wait(bool*, int)",
    "cThreadLib::~cThreadLib()",
    "clibMutex::clibMutex()",
    "clibMutex::createMutex(char*)",
    "clibMutex::getMutex()",
    "clibMutex::releaseMutex()",
    "clibMutex::~clibMutex()",
    "closeLog",
    "dump_vpd_buffer",
    "dumpdata",
    "endThreadProcess",
    "fpSharedCommFuncs",
    "fpSharedCommonFuncs",
    "fpSharedLibFuncs",
    "getSysTime",
    "getULongFromBufferLSBFirst",
    "getULongFromBufferMSBFirst",
    "getUShortFromBufferLSBFirst",
    "initLog",
    "loggingMutex",
    "openLinuxLib(char*)",
    "openLog",
};

TEST(ModuleExports, AreTheInterfaceAndNothingElse) {
    std::set<std::string> symbols = exportedSymbols();
    EXPECT_EQ(symbols.erase("moduleBus"), 1U);
    EXPECT_EQ(symbols.erase("moduleLogs"), 1U);
    EXPECT_THAT(symbols, testing::ContainerEq(interfaceSymbols));
}

TEST(ModuleExports, LetAProgramTakeOverTheLog) {
    heard.clear();
    void* handle = dlopen(module, RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(handle, nullptr) << dlerror();
    reinterpret_cast<void (*)()>(dlsym(handle, "moduleLogs"))();
    EXPECT_THAT(heard, testing::ElementsAre("module|hears"));

    // The module's own is there for programs that have none, and does nothing.
    char text[] = "text";
    reinterpret_cast<void (*)(char*, char*)>(dlsym(handle, "addLogItem"))(text, text);
    EXPECT_EQ(heard.size(), 1U);
    EXPECT_STREQ(text, "text");
    dlclose(handle);
}

}  // namespace
