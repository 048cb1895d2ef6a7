// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HttpServer.h"
#include "ServeRequest.h"
#include "TlsIdentity.h"

namespace QZ {

// Where the server is asked, and what it shows of itself over https.
struct Listeners {
    std::vector<HttpListener> all;
    std::shared_ptr<TlsIdentity> identity;  // none where nobody is asked over https
};

// What the request names, 127.0.0.1 where it names nothing. Makes a certificate, and the data
// folder for it, where https has none yet; anew, and says so, where the one that it made is not for
// an address that is named or for this machine's name. Throws UsageError for what is no address,
// and for one of http that is not loopback's where that is not allowed; Error for a certificate
// that cannot be used or made.
Listeners makeListeners(const ServeRequest& request,
                        const std::function<void(const std::string& line)>& say);

// What a client is to use for a listener, "user:password@" included where there is such.
std::string urlOf(const HttpListener& listener, std::uint16_t port, const std::string& userInfo);

// The certificate that a server makes for itself, in the data folder.
std::string ownCertificateFile();

}  // namespace QZ
