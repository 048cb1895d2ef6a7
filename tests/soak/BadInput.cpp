// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "BadInput.h"

#include "Requests.h"

namespace {

constexpr const char* METHOD = "EnumerateInstances";

std::string _repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

std::string _replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

std::string _parameter(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + value + "</IPARAMVALUE>";
}

// Bodies that are no request: the same answer to each (DSP0200, annex on headers).
std::vector<BadInput> _illFormed(const std::string& userInfo) {
    const std::string whole = call(METHOD, className("TAVIRA_Lease"));
    const struct {
        const char* name;
        std::string body;
    } bodies[] = {
        {"cut XML", whole.substr(0, whole.size() / 2)},
        {"two roots", whole + "<CIM/>"},
        {"another encoding", _replaced(whole, "utf-8", "utf-16")},
        {"bad UTF-8", _replaced(whole, "TAVIRA_Lease", "TAVIRA_\xff\xfe")},
        {"an entity bomb",
         "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;\">]>"
         "<CIM>&b;&b;&b;&b;</CIM>"},
        {"nested elements", _repeated("<a>", 100'000)},
    };
    std::vector<BadInput> all;
    for (const auto& body : bodies) {
        all.push_back({body.name, request(METHOD, body.body, userInfo), "HTTP/1.1 400 ",
                       "CIMError: request-not-well-formed"});
    }
    return all;
}

}  // namespace

std::vector<BadInput> badInput(const std::string& userInfo) {
    const std::string lease = className("TAVIRA_Lease");
    const auto refused = [&userInfo](const char* name, const std::string& method,
                                     const std::string& body, int code) {
        return BadInput{name, request(method, body, userInfo), "HTTP/1.1 200 ",
                        "<ERROR CODE=\"" + std::to_string(code) + '"'};
    };
    std::vector<BadInput> all = _illFormed(userInfo);
    all.push_back({"a body of 10 MB",
                   request(METHOD, std::string(std::size_t(10) << 20, 'x'), userInfo),
                   "HTTP/1.1 413 ", ""});
    all.push_back({"another charset",
                   _replaced(request(METHOD, call(METHOD, lease), userInfo), "=utf-8", "=latin1"),
                   "HTTP/1.1 415 ", ""});
    all.push_back(refused("an unknown method", "NoSuchMethod", call("NoSuchMethod", lease), 7));
    all.push_back(refused("a missing parameter", METHOD, call(METHOD, ""), 4));
    all.push_back(refused("a wrong type", METHOD,
                          call(METHOD, lease + _parameter("LocalOnly", "<VALUE>perhaps</VALUE>")),
                          4));
    all.push_back(refused("an unknown class", METHOD, call(METHOD, className("NO_Such")), 5));
    all.push_back({"an unknown namespace",
                   _replaced(request(METHOD, call(METHOD, lease, "nowhere"), userInfo),
                             "root/tavqz", "root/nowhere"),
                   "HTTP/1.1 200 ", "<ERROR CODE=\"3\""});
    all.push_back(
        {"10,000 names",
         enumeration("TAVIRA_Lease",
                     _parameter("PropertyList", "<VALUE.ARRAY>" +
                                                    _repeated("<VALUE>Lessor</VALUE>", 10'000) +
                                                    "</VALUE.ARRAY>"),
                     userInfo),
         "HTTP/1.1 200 ", "<VALUE.NAMEDINSTANCE>"});
    return all;
}
