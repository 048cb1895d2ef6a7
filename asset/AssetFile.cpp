// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AssetFile.h"

#include "Product.h"

namespace QZ {

namespace {

constexpr const wchar_t* _fileName = L"asset.dat";

}  // namespace

Mutex _fileMutex;

std::wstring AssetFilePath() {
    return Product::getDataDirectory() + _fileName;
}

AssetFileSession::AssetFileSession(const std::wstring& path, int mode) : AssetFileSession(path) {
    _file.open(mode);
}

namespace {

[[maybe_unused]] const bool _assetFileCreated = []() noexcept {
    const MutexLock lock(_fileMutex);
    return Product::makeDataFile(_fileName);
}();

}  // namespace
}  // namespace QZ
