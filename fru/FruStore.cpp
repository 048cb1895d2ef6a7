// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruStore.h"

#include <exception>
#include <memory>

#include "File.h"
#include "Product.h"

namespace QZ {

Mutex _storeMutex;

namespace {

// Makes the data folder and an empty file where they are missing. Nothing may escape while a
// library is being loaded: what is wrong here is reported by the first operation that meets it.
bool _createFruFile() noexcept {
    try {
        const MutexLock lock(_storeMutex);
        std::string reason;
        if (!Product::makeDataDirectory(reason))
            return false;
        File file(FruFilePath());
        file.open(ReadMode | WriteMode);
        file.close();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

[[maybe_unused]] const bool _fruFileCreated = _createFruFile();

}  // namespace

std::wstring FruFilePath() {
    return Product::getDataDirectory() + L"fru.dat";
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
