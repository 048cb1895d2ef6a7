// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "FruDecoder.h"

namespace {

void _require(bool promise) {
    if (!promise) {
        std::abort();
    }
}

void _readField(const QZ::FruField& field, const std::string& bytes) {
    _require(field.offset <= bytes.size() && field.length <= bytes.size() - field.offset);
    const std::string stored = bytes.substr(field.offset, field.length);
    _require(QZ::decodeIpmiText(field.encoding, stored) == field.text);
    // A text that was decoded can be stored again, but for pairs of UTF-16.
    if (field.encoding != QZ::IpmiEncoding::Utf16) {
        const std::string again = QZ::encodeIpmiText(field.encoding, field.text);
        _require(again.size() <= stored.size());
        _require(QZ::decodeIpmiText(field.encoding, again).rfind(field.text, 0) == 0 ||
                 field.text.empty());
    }
}

void _readArea(const QZ::FruArea& area, const QZ::FruInventory& fru, const std::string& bytes) {
    _require(!area.isDamaged || fru.state == QZ::FruInventory::State::Damaged);
    for (const QZ::FruField& field : area.custom) {
        _require(!field.text.empty());
        _readField(field, bytes);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);

    const QZ::FruInventory fru = QZ::decodeFru(bytes);

    using State = QZ::FruInventory::State;
    _require((fru.state == State::Ok || fru.state == State::Empty) == fru.reason.empty());
    const bool isAny = fru.chassis || fru.board || fru.product;
    _require(!isAny || fru.state == State::Ok || fru.state == State::Damaged);
    if (fru.chassis) {
        _readArea(*fru.chassis, fru, bytes);
        _readField(fru.chassis->serialNumber, bytes);
    }
    if (fru.board) {
        _readArea(*fru.board, fru, bytes);
        _readField(fru.board->fileId, bytes);
    }
    if (fru.product) {
        _readArea(*fru.product, fru, bytes);
        _readField(fru.product->fileId, bytes);
    }
    return 0;
}
