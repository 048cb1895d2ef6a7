// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

// A machine of nothing but a fresh folder: the code under test sees no other. Data files lie in
// its "data" folder, which is made; its firmware tables are what a test writes.
class TestMachine {
public:
    TestMachine() { std::filesystem::create_directory(_folder.file("data")); }

    const TemporaryFolder& folder() const { return _folder; }
    std::string assetFile() const { return _folder.read("data/asset.dat"); }
    void writeAssetFile(const std::string& text) const { _folder.write("data/asset.dat", text); }

private:
    TemporaryFolder _folder;
    ScopedEnvironment _root{"TAVQZ_HOST_ROOT", _folder.path()};
    ScopedEnvironment _data{"TAVQZ_DATA_DIR", _folder.file("data")};
};
