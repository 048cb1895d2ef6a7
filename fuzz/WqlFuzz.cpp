// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "MofParser.h"
#include "WqlMatch.h"

namespace {

const QZ::ClassRepository& classes() {
    static const QZ::ClassRepository CLASSES = [] {
        QZ::ClassRepository declared;
        declared.add(QZ::parseMof("class C { uint16 n; string t; boolean b; datetime d; };", "c"));
        return declared;
    }();
    return CLASSES;
}

Pegasus::CIMInstance indication() {
    using namespace Pegasus;
    CIMInstance instance{CIMName("C")};
    instance.addProperty(CIMProperty(CIMName("n"), CIMValue(Uint16(4))));
    instance.addProperty(CIMProperty(CIMName("t"), CIMValue(String("text"))));
    instance.addProperty(CIMProperty(CIMName("b"), CIMValue(Boolean(true))));
    instance.addProperty(
        CIMProperty(CIMName("d"), CIMValue(CIMDateTime("20270131120000.000000+060"))));
    return instance;
}

}  // namespace

// A query that can be read is written, and read again, as the same text, and either fits its class
// or does not; in any case it can be held against an indication.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace QZ;
    WqlQuery query;
    try {
        query = parseWql(std::string_view(reinterpret_cast<const char*>(data), size));
    } catch (const WqlError&) {
        return 0;
    }
    static const Pegasus::CIMInstance INDICATION = indication();
    const std::string text = wqlText(query);
    const WqlQuery again = parseWql(text);
    if (wqlText(again) != text ||
        matchesWql(query, INDICATION, classes()) != matchesWql(again, INDICATION, classes())) {
        std::abort();
    }
    (void)selectWql(query, INDICATION);
    try {
        checkWql(query, classes());
    } catch (const WqlError&) {
        // Its class has no such property, for instance.
    }
    return 0;
}
