// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ParsedRequest.h"

#include <utility>

#include "BasicCredentials.h"

namespace QZ {

HttpRequest takeRequest(ParsedRequest& parsed, const std::string& peer) {
    HttpRequest request;
    request.method = std::string(parsed.method_string());
    request.target = std::string(parsed.target());
    request.headers.reserve(16);
    for (const auto& field : parsed) {
        request.headers.emplace_back(field.name_string(), field.value());
    }
    request.body = std::move(parsed.body());
    request.peer = peer;
    return request;
}

ResponseStream::Form formOf(const ParsedRequest& parsed) {
    ResponseStream::Form form;
    form.isHttp11 = parsed.version() >= 11;
    form.keepsAlive = parsed.keep_alive();
    form.acceptsTrailers = parsed["TE"].find("trailers") != boost::beast::string_view::npos;
    return form;
}

Login loginOf(const HttpRequest& request) {
    Login login;
    login.peer = request.peer;
    const std::string* const header = request.header("Authorization");
    if (auto credentials = parseBasicCredentials(header ? *header : std::string())) {
        login.hasPassword = true;
        login.user = std::move(credentials->user);
        login.password = std::move(credentials->password);
    }
    return login;
}

void refuseLogin(const Verdict& verdict, const std::string& realm, HttpReply& reply) {
    if (verdict.kind == Verdict::Refused) {
        reply.setStatus(401);
        reply.addHeader("WWW-Authenticate", "Basic realm=\"" + realm + "\", charset=\"UTF-8\"");
        return;
    }
    reply.setStatus(verdict.kind == Verdict::TooOften ? 429 : 503);
    reply.addHeader("Retry-After", std::to_string(verdict.retryAfter.count()));
}

}  // namespace QZ
