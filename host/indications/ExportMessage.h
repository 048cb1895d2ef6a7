// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>
#include <string_view>

#include "Error.h"
#include "HttpReply.h"

namespace QZ {

// The message by which a listener is told of an alert: ExportIndication, DSP0200 5.4.3 and DSP0201
// 5.3. Both sides of it.

// What is no such message, or no answer to one.
class NoExportMessage : public Error {
public:
    using Error::Error;
};

// The listener has the alert, and does not want it.
class ExportRefused : public Error {
public:
    using Error::Error;
};

struct ExportRequest {
    std::string messageId;
    Pegasus::CIMInstance alert;
};

HttpHeaders exportRequestHeaders();
std::string encodeExportRequest(const ExportRequest& request);

// Throws NoExportMessage.
ExportRequest decodeExportRequest(std::string_view body);

HttpHeaders exportAnswerHeaders();
std::string encodeExportAnswer(const std::string& messageId);

// Throws ExportRefused where the answer is an ERROR, NoExportMessage where it is none to that
// message.
void checkExportAnswer(std::string_view body, const std::string& messageId);

}  // namespace QZ
