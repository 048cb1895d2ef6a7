// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpMapping.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <charconv>

#include "CimText.h"
#include "MofSyntax.h"

namespace QZ {

namespace {

constexpr const char* MAPPING = "http://www.dmtf.org/cim/mapping/http/v1.0";
constexpr const char* CONTENT_TYPE = "application/xml; charset=utf-8";

int _hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Without its %XX, with which names stand in headers.
std::string _unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? _hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? _hexDigit(text[i + 2]) : -1;
        if (low >= 0) {
            result += char(high * 16 + low);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::string _trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Calls take(element) for each element of a comma-separated header.
template <class Take>
void _forEach(const std::string& list, char separator, Take take) {
    std::size_t begin = 0;
    while (begin <= list.size()) {
        const std::size_t end = std::min(list.find(separator, begin), list.size());
        take(_trimmed(list.substr(begin, end - begin)));
        begin = end + 1;
    }
}

// XML in UTF-8, or in nothing that says otherwise.
bool _isXml(const std::string* contentType) {
    if (!contentType) {
        return true;
    }
    bool isXml = false;
    bool isFirst = true;
    _forEach(*contentType, ';', [&](const std::string& part) {
        if (isFirst) {
            isXml = sameName(part, "application/xml") || sameName(part, "text/xml");
            isFirst = false;
        } else if (part.size() > 8 && sameName(part.substr(0, 8), "charset=")) {
            std::string charset = part.substr(8);
            if (charset.size() > 1 && charset.front() == '"') {
                charset = charset.substr(1, charset.size() - 2);
            }
            isXml = isXml && (sameName(charset, "utf-8") || sameName(charset, "us-ascii"));
        }
    });
    return isXml;
}

}  // namespace

HttpMapping::HttpMapping(const HttpRequest& request)
    : _request(request), _isExtended(request.method == "M-POST") {
    if (!_isExtended) {
        return;
    }
    const std::string* const man = request.header("Man");
    const std::size_t mapping = man ? man->find(MAPPING) : std::string::npos;
    _isDeclared = mapping != std::string::npos;
    const std::size_t number = _isDeclared ? man->find("ns=", mapping) : std::string::npos;
    if (number != std::string::npos) {
        const std::string digits = man->substr(number + 3);
        _prefix = digits.substr(0, digits.find_first_not_of("0123456789")) + "-";
    }
}

const std::string* HttpMapping::_extension(const std::string& name) const {
    return _request.header(_prefix + name);
}

std::optional<HttpAnswer> HttpMapping::refusal() const {
    if (!_isDeclared) {
        return HttpAnswer{510, {}, {}};
    }
    if (!_isXml(_request.header("Content-Type"))) {
        return HttpAnswer{415, {}, {}};
    }
    const std::string* const operation = _extension("CIMOperation");
    if (!operation) {
        return HttpAnswer{400, {}, {}};
    }
    if (!sameName(_trimmed(*operation), "MethodCall")) {
        return failure(501, "unsupported-operation");
    }
    if (_extension("CIMBatch")) {
        return failure(501, "multiple-requests-unsupported");
    }
    const std::string* const version = _extension("CIMProtocolVersion");
    if (version && _trimmed(*version).rfind("1.", 0) != 0) {
        return failure(501, "unsupported-protocol-version");
    }
    return std::nullopt;
}

std::optional<HttpAnswer> HttpMapping::mismatch(const CimRequest& request) const {
    const std::string* const method = _extension("CIMMethod");
    const std::string* const object = _extension("CIMObject");
    const std::string space = make_string(request.nameSpace.getString());
    if (!method || _unescaped(_trimmed(*method)) != request.call.method || !object ||
        !sameName(_unescaped(_trimmed(*object)), space)) {
        return failure(400, "header-mismatch");
    }
    return std::nullopt;
}

HttpHeaders HttpMapping::answerHeaders() const {
    HttpHeaders headers{{"Content-Type", CONTENT_TYPE}};
    if (_isExtended) {
        headers.emplace_back("Ext", "");
        headers.emplace_back("Cache-Control", "no-cache");
        headers.emplace_back("Man",
                             std::string(MAPPING) + "; ns=" + _prefix.substr(0, _prefix.find('-')));
    }
    headers.emplace_back(_prefix + "CIMOperation", "MethodResponse");
    return headers;
}

HttpAnswer HttpMapping::failure(int status, const std::string& cimError) const {
    return {status, {{_prefix + "CIMError", cimError}}, {}};
}

Pegasus::AcceptLanguageList parseAcceptLanguage(const std::string* header) {
    using namespace Pegasus;
    AcceptLanguageList list;
    if (!header) {
        return list;
    }
    _forEach(*header, ',', [&](const std::string& element) {
        const std::size_t parameter = element.find(';');
        float quality = 1;
        const std::size_t q = element.find("q=", parameter == element.npos ? 0 : parameter);
        if (parameter != element.npos && q != element.npos) {
            const char* const end = element.data() + element.size();
            std::from_chars(element.data() + q + 2, end, quality);
        }
        try {
            const std::string tag = _trimmed(element.substr(0, parameter));
            list.insert(LanguageTag(String(tag.data(), Uint32(tag.size()))), quality);
        } catch (const Exception&) {
            // No language that anybody could answer in.
        }
    });
    return list;
}

}  // namespace QZ
