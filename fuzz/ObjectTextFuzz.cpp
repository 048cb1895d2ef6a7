// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMObjectPath.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "CimObjectFile.h"
#include "Error.h"
#include "ObjectText.h"

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

// A file without a disk.
class ObjectFile : public QZ::CimObjectFile {
public:
    ObjectFile() : CimObjectFile(L"") {}
    using CimObjectFile::_compose;
    using CimObjectFile::_load;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    ObjectFile file;
    const bool isSound = file._load(text);
    const std::string composed = file._compose();
    require(!isSound || composed.substr(0, size) == text);
    require(file._load(composed) && file._compose() == composed);

    if (const auto instance = QZ::parseInstance(text)) {
        const std::string written = QZ::composeInstance(*instance);
        const auto again = QZ::parseInstance(written);
        require(again && QZ::composeInstance(*again) == written);
    }
    return 0;
}
