// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "ScopedEnvironment.h"
#include "SmBiosBuilder.h"
#include "TemporaryFolder.h"

// Each test has a machine of its own, which is bare until something is written for it.
class InventoryMachine : public testing::Test {
protected:
    void write(const SmBiosBuilder& firmware) const { firmware.writeBelow(_root.path()); }
    void writeFile(const std::string& name, const std::string& content) const {
        _root.write(name, content);
    }
    const std::string& root() const { return _root.path(); }

private:
    TemporaryFolder _root;
    ScopedEnvironment _environment{"TAVQZ_HOST_ROOT", _root.path()};
};
