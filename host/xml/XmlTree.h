// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace QZ {

// What a document may hold.
struct XmlLimits {
    std::size_t depth = 64;     // elements within one another
    std::size_t nodes = 65536;  // elements and attributes
};

struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<XmlElement> children;
    std::string text;  // of this element itself, its parts joined

    // The attribute of that name; null where there is none.
    const std::string* attribute(std::string_view wanted) const;
    // The first child of that name; null where there is none.
    const XmlElement* child(std::string_view wanted) const;
};

// The document is not well-formed XML 1.0 in UTF-8 or ASCII, or not such as we take.
class XmlError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads a document into a tree, and returns its root. A document type may be named, but what it
// would declare is neither read nor, inside the document, allowed: there are no entities but XML's
// own five. Throws XmlError with the place, also beyond the limits.
XmlElement parseXml(std::string_view document, const XmlLimits& limits);

}  // namespace QZ
