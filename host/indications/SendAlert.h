// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "DeliveryQueues.h"
#include "HttpTrust.h"

namespace QZ {

// Sends by HTTP, or by HTTPS where the URL says so, to a listener that the trust is for. Throws
// Error for want of a good answer, ExportRefused for a bad one. Any thread may call.
void sendAlert(const DeliveryQueues::Alert& alert, const HttpTrust& trust);

}  // namespace QZ
