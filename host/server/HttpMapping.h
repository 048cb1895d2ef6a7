// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/AcceptLanguageList.h>

#include <optional>
#include <string>
#include <string_view>

#include "CimRequest.h"
#include "HttpReply.h"
#include "HttpRequest.h"

namespace QZ {

// The CIM extension headers of a request (DSP0200, 7.2 and 7.3), under whatever prefix they stand:
// with M-POST each begins with a number that the Man header gives.
class HttpMapping {
public:
    explicit HttpMapping(const HttpRequest& request);

    // What is wrong with the headers, if anything: an answer that ends the request.
    std::optional<HttpAnswer> refusal() const;

    // The same for those that must agree with what the body says.
    std::optional<HttpAnswer> mismatch(const CimRequest& request) const;

    // The headers of an answer in CIM-XML.
    HttpHeaders answerHeaders() const;

    // What ends an answer that fails when some of it left already.
    HttpHeaders trailers(int status, const std::string& description) const;
    // Their names, for a Trailer header (RFC 9110, 6.6.2).
    std::string trailerNames() const;

    // An answer without a body: CIMError says why.
    HttpAnswer failure(int status, const std::string& cimError) const;

private:
    bool _isExtension(std::string_view header, std::string_view name) const;
    const std::string* _extension(std::string_view name) const;
    bool _says(std::string_view name, std::string_view expected,
               bool (*isSame)(std::string_view, std::string_view)) const;

    const HttpRequest& _request;
    bool _isExtended = false;  // M-POST
    bool _isDeclared = true;   // the Man header that it needs is there
    std::string _prefix;       // "73-"
};

// "en-US,de;q=0.5" as a list. What cannot be read is left out.
Pegasus::AcceptLanguageList parseAcceptLanguage(const std::string* header);

}  // namespace QZ
