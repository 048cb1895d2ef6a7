// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ControllerRecord.h"
#include "IpmiReplies.h"

namespace {

void _require(bool promise) {
    if (!promise) {
        std::abort();
    }
}

}  // namespace

// The recorded replies of a controller: none is lost, and none changes its size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    QZ::IpmiReplies before = QZ::IpmiReplies::parse(text);
    _require(QZ::IpmiReplies::parse(before.text()).text() == before.text());

    QZ::MachineFiles files = {{"dev/ipmi0.replies", text}};
    QZ::sanitizeController(files, "key");

    QZ::IpmiReplies after = QZ::IpmiReplies::parse(files.begin()->second);
    _require(after.entries().size() == before.entries().size());
    for (const auto& [request, reply] : before.entries()) {
        const auto& changed = after.entries()[request];
        _require(changed.has_value() == reply.has_value());
        if (reply) {
            _require(changed->completion == reply->completion);
            _require(changed->data.size() == reply->data.size());
        }
    }
    return 0;
}
