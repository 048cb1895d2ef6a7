// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlTree.h"

#include <expat.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>

#include "Text.h"
#include "XmlMemory.h"

namespace QZ {

namespace {

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

// Where what begins at `at` with that opening ends, if it does begin there; else 0.
std::size_t _endOf(std::string_view document, std::size_t at, std::string_view opening,
                   std::string_view closing) {
    if (document.substr(at, opening.size()) != opening) {
        return 0;
    }
    const std::size_t end = document.find(closing, at + opening.size());
    return end == document.npos ? document.size() : end + closing.size();
}

bool _isOwnEntity(std::string_view behindAmpersand) {
    for (const std::string_view known : {"#", "lt;", "gt;", "amp;", "quot;", "apos;"}) {
        if (behindAmpersand.substr(0, known.size()) == known) {
            return true;
        }
    }
    return false;
}

// Where the document type that begins at `at` ends, if one does; else 0. It declares nothing
// itself, but the name of where it is declared may hold anything between its quotes.
std::size_t _endOfDoctype(std::string_view document, std::size_t at) {
    constexpr std::string_view OPENING = "<!DOCTYPE";
    if (document.substr(at, OPENING.size()) != OPENING) {
        return 0;
    }
    at = document.find_first_of("\"'>", at);
    while (at != document.npos && document[at] != '>') {
        const std::size_t end = document.find(document[at], at + 1);
        at = end == document.npos ? end : document.find_first_of("\"'>", end + 1);
    }
    return std::min(at, document.size());
}

// Whether a well-formed document refers to another entity than XML's own five.
bool _namesUnknownEntity(std::string_view document) {
    std::size_t at = document.find_first_of("<&");
    while (at != document.npos) {
        if (document[at] == '&' && !_isOwnEntity(document.substr(at + 1))) {
            return true;
        }
        std::size_t next = std::max(at + 1, _endOfDoctype(document, at));
        for (const auto& [opening, closing] :
             {std::pair("<!--", "-->"), std::pair("<![CDATA[", "]]>"), std::pair("<?", "?>")}) {
            next = std::max(next, _endOf(document, at, opening, closing));
        }
        at = document.find_first_of("<&", next);
    }
    return false;
}

// What expat tells, put together. The tree is built from the inside: `_open` holds the elements
// that have not ended, and an element goes to its parent when it ends.
class TreeBuilder {
public:
    explicit TreeBuilder(const XmlLimits& limits)
        : _limits(limits), _parser(XML_ParserCreate_MM(nullptr, XmlMemory::suite(), nullptr)) {
        if (!_parser) {
            throw std::bad_alloc();
        }
        // One secret for the process against crafted names, where expat would ask for one each
        // time.
        static const unsigned long SALT = std::random_device()() | 1UL;
        _open.reserve(16);
        XML_SetHashSalt(_parser.get(), SALT);
        XML_SetUserData(_parser.get(), this);
        XML_SetElementHandler(_parser.get(), &_onStart, &_onEnd);
        XML_SetCharacterDataHandler(_parser.get(), &_onText);
        XML_SetXmlDeclHandler(_parser.get(), &_onDeclaration);
        XML_SetStartDoctypeDeclHandler(_parser.get(), &_onDoctype);
        XML_SetSkippedEntityHandler(_parser.get(), &_onSkippedEntity);
    }

    XmlElement parse(std::string_view document) {
        if (document.size() > std::size_t(std::numeric_limits<int>::max())) {
            throw XmlError("the document is too long");
        }
        // Without a declaration expat would take these for UTF-16, with a byte order mark or by the
        // zero in the first character.
        const std::string_view head = document.substr(0, 2);
        if (head == "\xFE\xFF" || head == "\xFF\xFE" || head.find('\0') != head.npos) {
            throw XmlError("UTF-16: write it in UTF-8");
        }
        if (XML_Parse(_parser.get(), document.data(), int(document.size()), XML_TRUE) !=
            XML_STATUS_OK) {
            _fail();
        }
        // In attributes expat leaves out what it thinks the document type to declare.
        if (_hasDoctype && _namesUnknownEntity(document)) {
            throw XmlError("an entity that XML does not define itself");
        }
        return std::move(_root);
    }

private:
    [[noreturn]] void _fail() const {
        const char* const what =
            _refusal ? _refusal : XML_ErrorString(XML_GetErrorCode(_parser.get()));
        throw XmlError(std::string(what) + ", in line " +
                       std::to_string(XML_GetCurrentLineNumber(_parser.get())));
    }

    void _refuse(const char* why) {
        _refusal = why;
        XML_StopParser(_parser.get(), XML_FALSE);
    }

    static TreeBuilder& _self(void* data) { return *static_cast<TreeBuilder*>(data); }

    static void _onStart(void* data, const XML_Char* name, const XML_Char** attributes) {
        TreeBuilder& self = _self(data);
        if (self._refusal) {
            return;
        }
        std::size_t count = 0;
        while (attributes[2 * count]) {
            ++count;
        }
        self._nodes += 1 + count;
        if (self._open.size() >= self._limits.depth) {
            return self._refuse("elements are nested too deeply");
        }
        if (self._nodes > self._limits.nodes) {
            return self._refuse("there are too many elements and attributes");
        }
        XmlElement& element = self._open.emplace_back();
        element.name = name;
        element.attributes.reserve(count);
        for (const XML_Char** at = attributes; *at; at += 2) {
            element.attributes.emplace_back(at[0], at[1]);
        }
    }

    static void _onEnd(void* data, const XML_Char* /*name*/) {
        TreeBuilder& self = _self(data);
        if (self._refusal) {
            return;
        }
        std::vector<XmlElement>& open = self._open;
        const bool isRoot = open.size() == 1;
        XmlElement& place = isRoot ? self._root : open[open.size() - 2].children.emplace_back();
        place = std::move(open.back());
        open.pop_back();
    }

    static void _onText(void* data, const XML_Char* text, int length) {
        TreeBuilder& self = _self(data);
        if (!self._open.empty()) {
            self._open.back().text.append(text, std::size_t(length));
        }
    }

    static void _onDeclaration(void* data, const XML_Char* version, const XML_Char* encoding,
                               int /*standalone*/) {
        if (version && std::string_view(version) != "1.0") {
            return _self(data)._refuse("the version of XML is not 1.0");
        }
        if (encoding && !sameName(encoding, "UTF-8") && !sameName(encoding, "US-ASCII")) {
            _self(data)._refuse("the encoding is neither UTF-8 nor US-ASCII");
        }
    }

    static void _onDoctype(void* data, const XML_Char* /*name*/, const XML_Char* /*systemId*/,
                           const XML_Char* /*publicId*/, int hasInternalSubset) {
        _self(data)._hasDoctype = true;
        if (hasInternalSubset) {
            _self(data)._refuse("declarations inside the document are not taken");
        }
    }

    static void _onSkippedEntity(void* data, const XML_Char* /*name*/, int /*isParameter*/) {
        _self(data)._refuse("an entity that XML does not define itself");
    }

    const XmlLimits& _limits;
    XmlMemory _memory;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser> _parser;
    std::vector<XmlElement> _open;
    XmlElement _root;
    std::size_t _nodes = 0;
    bool _hasDoctype = false;
    const char* _refusal = nullptr;
};

}  // namespace

const std::string* XmlElement::attribute(std::string_view wanted) const {
    for (const auto& [key, value] : attributes) {
        if (key == wanted) {
            return &value;
        }
    }
    return nullptr;
}

const XmlElement* XmlElement::child(std::string_view wanted) const {
    for (const XmlElement& element : children) {
        if (element.name == wanted) {
            return &element;
        }
    }
    return nullptr;
}

XmlElement parseXml(std::string_view document, const XmlLimits& limits) {
    return TreeBuilder(limits).parse(document);
}

}  // namespace QZ
