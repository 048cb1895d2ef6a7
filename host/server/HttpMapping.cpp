// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpMapping.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <charconv>

#include "CimText.h"
#include "Text.h"
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
std::string _unescaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
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

std::string_view _unquoted(std::string_view text) {
    const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// Calls take(element) for each element of a header, between separators outside of quotes.
template <class Take>
void _forEach(std::string_view list, char separator, Take take) {
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
std::string_view _withParameters(std::string_view text, Take take) {
    std::string_view first;
    bool isFirst = true;
    _forEach(text, ';', [&](std::string_view part) {
        if (isFirst) {
            first = _unquoted(part);
            isFirst = false;
            return;
        }
        const std::size_t equals = std::min(part.find('='), part.size());
        const std::string_view value =
            equals < part.size() ? part.substr(equals + 1) : std::string_view();
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
    const std::string_view type =
        _withParameters(*contentType, [&](std::string_view name, std::string_view value) {
            isReadable = isReadable && (!sameName(name, "charset") || sameName(value, "utf-8") ||
                                        sameName(value, "us-ascii"));
        });
    return isReadable && (sameName(type, "application/xml") || sameName(type, "text/xml"));
}

// Whether one declaration of a Man header (RFC 2774, 4) is that of our mapping. Then `prefix` is
// what its headers begin with.
bool _declaresMapping(std::string_view declaration, std::string& prefix) {
    bool isNumber = true;
    std::string number;
    const std::string_view extension =
        _withParameters(declaration, [&](std::string_view name, std::string_view value) {
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
        if (_isExtended && sameName(name, "Man")) {
            _forEach(value, ',', [this](std::string_view declaration) {
                _isDeclared = _isDeclared || _declaresMapping(declaration, _prefix);
            });
        }
    }
}

bool HttpMapping::_isExtension(std::string_view header, std::string_view name) const {
    return header.size() == _prefix.size() + name.size() &&
           header.substr(0, _prefix.size()) == _prefix &&
           sameName(header.substr(_prefix.size()), name);
}

const std::string* HttpMapping::_extension(std::string_view name) const {
    for (const auto& [key, value] : _request.headers) {
        if (_isExtension(key, name)) {
            return &value;
        }
    }
    return nullptr;
}

// Whether the header is there, and says that as often as it stands there.
bool HttpMapping::_says(std::string_view name, std::string_view expected,
                        bool (*isSame)(std::string_view, std::string_view)) const {
    bool isThere = false;
    for (const auto& [key, value] : _request.headers) {
        if (_isExtension(key, name)) {
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
    if (version && trimmed(*version).substr(0, 2) != "1.") {
        return failure(501, "unsupported-protocol-version");
    }
    return std::nullopt;
}

std::optional<HttpAnswer> HttpMapping::mismatch(const CimRequest& request) const {
    const auto equal = [](std::string_view one, std::string_view other) { return one == other; };
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
    _forEach(*header, ',', [&](std::string_view element) {
        const std::size_t parameter = element.find(';');
        float quality = 1;
        const std::size_t q = element.find("q=", parameter == element.npos ? 0 : parameter);
        if (parameter != element.npos && q != element.npos) {
            const char* const end = element.data() + element.size();
            std::from_chars(element.data() + q + 2, end, quality);
        }
        const std::string_view tag = trimmed(element.substr(0, parameter));
        if (tag.empty()) {
            return;
        }
        try {
            list.insert(LanguageTag(String(tag.data(), Uint32(tag.size()))), quality);
        } catch (const Exception&) {
            // No language that anybody could answer in.
        }
    });
    return list;
}

}  // namespace QZ
