// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpMapping.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <charconv>

#include "CimText.h"
#include "MofSyntax.h"
#include "XmlText.h"

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

// With %XX for what may not stand in a URI as it is (RFC 2396, 2.4), as texts stand in headers.
std::string _escaped(const std::string& text) {
    static const char DIGITS[] = "0123456789ABCDEF";
    static const std::string OTHERS = "-_.!~*'();/?:@&=+$,";
    std::string result;
    for (const char c : text) {
        const bool isAlphanumeric =
            (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (isAlphanumeric || OTHERS.find(c) != std::string::npos) {
            result += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += {'%', DIGITS[byte >> 4U], DIGITS[byte & 0xFU]};
        }
    }
    return result;
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

std::string _unquoted(const std::string& text) {
    const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// Calls take(element) for each element of a header, between separators outside of quotes.
template <class Take>
void _forEach(const std::string& list, char separator, Take take) {
    std::size_t begin = 0;
    bool isQuoted = false;
    for (std::size_t at = 0; at <= list.size(); ++at) {
        if (at == list.size() || (list[at] == separator && !isQuoted)) {
            take(trimmed(list.substr(begin, at - begin)));
            begin = at + 1;
        } else if (list[at] == '"') {
            isQuoted = !isQuoted;
        }
    }
}

// The same for the parameters behind the first element: take(name, value), without quotes. Returns
// that first element.
template <class Take>
std::string _withParameters(const std::string& text, Take take) {
    std::string first;
    bool isFirst = true;
    _forEach(text, ';', [&](const std::string& part) {
        if (isFirst) {
            first = _unquoted(part);
            isFirst = false;
            return;
        }
        const std::size_t equals = std::min(part.find('='), part.size());
        const std::string value = equals < part.size() ? part.substr(equals + 1) : "";
        take(trimmed(part.substr(0, equals)), _unquoted(trimmed(value)));
    });
    return first;
}

// XML in UTF-8, or in nothing that says otherwise.
bool _isXml(const std::string* contentType) {
    if (!contentType) {
        return true;
    }
    bool isReadable = true;
    const std::string type =
        _withParameters(*contentType, [&](const std::string& name, const std::string& value) {
            isReadable = isReadable && (!sameName(name, "charset") || sameName(value, "utf-8") ||
                                        sameName(value, "us-ascii"));
        });
    return isReadable && (sameName(type, "application/xml") || sameName(type, "text/xml"));
}

// Whether one declaration of a Man header (RFC 2774, 4) is that of our mapping. Then `prefix` is
// what its headers begin with.
bool _declaresMapping(const std::string& declaration, std::string& prefix) {
    bool isNumber = true;
    std::string number;
    const std::string extension =
        _withParameters(declaration, [&](const std::string& name, const std::string& value) {
            if (sameName(name, "ns")) {
                number = value;
                isNumber =
                    !value.empty() && value.find_first_not_of("0123456789") == std::string::npos;
            }
        });
    if (extension != MAPPING || !isNumber) {
        return false;
    }
    prefix = number.empty() ? "" : number + "-";
    return true;
}

}  // namespace

HttpMapping::HttpMapping(const HttpRequest& request)
    : _request(request), _isExtended(request.method == "M-POST") {
    _isDeclared = !_isExtended;
    for (const auto& [name, value] : request.headers) {
        if (_isExtended && sameHeader(name, "Man")) {
            _forEach(value, ',', [this](const std::string& declaration) {
                _isDeclared = _isDeclared || _declaresMapping(declaration, _prefix);
            });
        }
    }
}

const std::string* HttpMapping::_extension(const std::string& name) const {
    return _request.header(_prefix + name);
}

// Whether the header is there, and says that as often as it stands there.
bool HttpMapping::_says(const std::string& name, const std::string& expected,
                        bool (*isSame)(const std::string&, const std::string&)) const {
    bool isThere = false;
    for (const auto& [key, value] : _request.headers) {
        if (sameHeader(key, _prefix + name)) {
            if (!isSame(_unescaped(trimmed(value)), expected)) {
                return false;
            }
            isThere = true;
        }
    }
    return isThere;
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
    if (!sameName(trimmed(*operation), "MethodCall")) {
        return failure(501, "unsupported-operation");
    }
    if (_extension("CIMBatch")) {
        return failure(501, "multiple-requests-unsupported");
    }
    const std::string* const version = _extension("CIMProtocolVersion");
    if (version && trimmed(*version).rfind("1.", 0) != 0) {
        return failure(501, "unsupported-protocol-version");
    }
    return std::nullopt;
}

std::optional<HttpAnswer> HttpMapping::mismatch(const CimRequest& request) const {
    const auto equal = [](const std::string& one, const std::string& other) {
        return one == other;
    };
    if (!_says("CIMMethod", request.call.method, equal) ||
        !_says("CIMObject", make_string(request.nameSpace.getString()), sameName)) {
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

HttpHeaders HttpMapping::trailers(int status, const std::string& description) const {
    return {{_prefix + "CIMStatusCode", std::to_string(status)},
            {_prefix + "CIMStatusCodeDescription", _escaped(description)}};
}

std::string HttpMapping::trailerNames() const {
    return _prefix + "CIMStatusCode, " + _prefix + "CIMStatusCodeDescription";
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
            const std::string tag = trimmed(element.substr(0, parameter));
            list.insert(LanguageTag(String(tag.data(), Uint32(tag.size()))), quality);
        } catch (const Exception&) {
            // No language that anybody could answer in.
        }
    });
    return list;
}

}  // namespace QZ
