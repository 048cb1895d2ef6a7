// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "CimRequest.h"
#include "XmlWriting.h"

namespace QZ {

// Writes the answer to one call, as it comes: begin, the elements that are returned, end. One
// thread at a time.
class CimResponseWriter {
public:
    // Takes the next bytes; may wait, and may throw, which passes through.
    using Sink = std::function<void(std::string_view bytes)>;

    CimResponseWriter(CimCall call, Sink sink) : _call(std::move(call)), _sink(std::move(sink)) {}

    // Says that the answer returns something, if perhaps no element.
    void returns() { _beginValue(); }

    void namedInstance(const Pegasus::CIMObjectPath& path,
                       const Pegasus::CIMConstInstance& instance, const XmlForm& form);
    void instanceWithPath(const Pegasus::CIMObjectPath& path,
                          const Pegasus::CIMConstInstance& instance, const XmlForm& form);
    // One of the elements of XmlWriting.h.
    void element(const std::string& xml);

    // An output parameter, behind all that is returned: of type "boolean" or "string".
    void parameter(const char* name, const char* type, const std::string& value);

    // Ends an answer that returns something, or nothing.
    void end();

    // The whole answer of a call that failed, as text; nothing may have been written.
    static std::string error(const CimCall& call, int status, const std::string& description);
    static std::string error(const CimRefusal& refusal) {
        return error(refusal.call, refusal.status, refusal.reason);
    }

private:
    void _begin();
    void _beginValue();
    void _endValue();
    void _flush(std::size_t limit);

    CimCall _call;
    Sink _sink;
    std::string _xml;
    enum { NotBegun, Begun, InValue, BehindValue } _place = NotBegun;
};

}  // namespace QZ
