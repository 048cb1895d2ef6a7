// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "TemporaryFolder.h"
#include "tavqz/cRegistry.h"

inline constexpr const char* AGENT =
    "REGEDIT4\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Agent]\n"
    "FullName=string&The Agent&\n"
    "Name=string&Agent&\n"
    "Level=dword:0000002A\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Agent\\Ports]\n"
    "Http=dword:0000170c\n";

// A file, and the object that reads it.
class RegistryTest : public testing::Test {
protected:
    void write(const std::string& text) { _folder.write("agent.reg", text); }
    std::string file() const { return _folder.read("agent.reg"); }
    cRegistry open() { return cRegistry(_path.data()); }

    // "text:…", "number:…" or "none".
    static std::string find(cRegistry& registry, std::string key, std::string name) {
        unsigned long number = 77;
        std::string text(cRegistry::MAX_TEXT + 1, '\0');
        const int found = registry.GetRegInfo(key.data(), name.data(), &number,
                                              reinterpret_cast<unsigned char*>(text.data()));
        text.resize(text.find('\0'));
        if (found == 0) {
            EXPECT_EQ(number, 0UL);
            EXPECT_EQ(text, "");
            return "none";
        }
        return text.empty() ? "number:" + std::to_string(number) : "text:" + text;
    }
    static int update(cRegistry& registry, std::string key, std::string name, std::string data) {
        return registry.UpdateRegInfo(key.data(), name.data(), data.data());
    }
    static int write(cRegistry& registry, std::string key, std::string entry) {
        return registry.WriteRegInfo(key.data(), entry.data());
    }

    TemporaryFolder _folder;
    std::string _path = _folder.file("agent.reg");
};
