// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AssetFile.h"

#include <exception>

#include "File.h"
#include "Product.h"

namespace QZ {

Mutex _fileMutex;

std::wstring AssetFilePath() {
    return Product::getDataDirectory() + L"asset.dat";
}

AssetFileSession::AssetFileSession(const std::wstring& path, int mode)
    : _lock(_fileMutex), _file(path) {
    _file.open(mode);
}

namespace {

// Makes the data folder and an empty file where they are missing. Nothing may escape while a
// library is being loaded: what is wrong here is reported by the first operation that meets it.
bool _createAssetFile() noexcept {
    try {
        const MutexLock lock(_fileMutex);
        std::string reason;
        if (!Product::makeDataDirectory(reason)) {
            return false;
        }
        File file(AssetFilePath());
        file.open(3);
        file.close();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

[[maybe_unused]] const bool _assetFileCreated = _createAssetFile();

}  // namespace
}  // namespace QZ
