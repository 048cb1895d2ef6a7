// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

#include "HttpRequest.h"
#include "Login.h"
#include "ResponseStream.h"

namespace QZ {

using ParsedRequest = boost::beast::http::request<boost::beast::http::string_body>;

// The request without its body, which is moved. The caller is not known yet.
HttpRequest takeRequest(ParsedRequest& parsed, const std::string& peer);

// How the client wants the answer.
ResponseStream::Form formOf(const ParsedRequest& parsed);

// What the Authorization header says.
Login loginOf(const HttpRequest& request);

// Answers who is not let in.
void refuseLogin(const Verdict& verdict, const std::string& realm, HttpReply& reply);

}  // namespace QZ
