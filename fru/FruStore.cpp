// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruStore.h"

#include <memory>

#include "Product.h"

namespace QZ {

namespace {

constexpr const wchar_t* _fileName = L"fru.dat";

}  // namespace

Mutex _storeMutex;

namespace {

[[maybe_unused]] const bool _fruFileCreated = []() noexcept {
    const MutexLock lock(_storeMutex);
    return Product::makeDataFile(_fileName);
}();

}  // namespace

std::wstring FruFilePath() {
    return Product::getDataDirectory() + _fileName;
}

CimObjectFile& _fruStore() {
    static std::wstring path;
    static std::unique_ptr<CimObjectFile> store;
    // The environment may name another folder by now.
    if (std::wstring current = FruFilePath(); !store || current != path) {
        store = std::make_unique<CimObjectFile>(current);
        path = std::move(current);
    }
    return *store;
}

}  // namespace QZ
