// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMFlavor.h>

namespace Pegasus {

const CIMFlavor CIMFlavor::NONE(0);
const CIMFlavor CIMFlavor::OVERRIDABLE(1);
const CIMFlavor CIMFlavor::ENABLEOVERRIDE(1);
const CIMFlavor CIMFlavor::TOSUBCLASS(2);
const CIMFlavor CIMFlavor::TOSUBELEMENTS(2);
const CIMFlavor CIMFlavor::TOINSTANCE(4);
const CIMFlavor CIMFlavor::TRANSLATABLE(8);
const CIMFlavor CIMFlavor::DISABLEOVERRIDE(16);
const CIMFlavor CIMFlavor::RESTRICTED(32);
const CIMFlavor CIMFlavor::DEFAULTS(1 | 2);

void CIMFlavor::addFlavor(const CIMFlavor& flavor) {
    _bits |= flavor._bits;
}

void CIMFlavor::removeFlavor(const CIMFlavor& flavor) {
    _bits &= ~flavor._bits;
}

Boolean CIMFlavor::hasFlavor(const CIMFlavor& flavor) const {
    return (_bits & flavor._bits) == flavor._bits;
}

Boolean CIMFlavor::equal(const CIMFlavor& flavor) const {
    return _bits == flavor._bits;
}

CIMFlavor CIMFlavor::operator+(const CIMFlavor& flavor) const {
    return CIMFlavor(_bits | flavor._bits);
}

String CIMFlavor::toString() const {
    static const struct {
        const CIMFlavor& flavor;
        const char* name;
    } names[] = {{OVERRIDABLE, "OVERRIDABLE"},         {TOSUBCLASS, "TOSUBCLASS"},
                 {TOINSTANCE, "TOINSTANCE"},           {TRANSLATABLE, "TRANSLATABLE"},
                 {DISABLEOVERRIDE, "DISABLEOVERRIDE"}, {RESTRICTED, "RESTRICTED"}};
    String text;
    for (const auto& [flavor, name] : names) {
        if (!hasFlavor(flavor))
            continue;
        if (text.size() > 0)
            text.append(' ');
        text.append(name);
    }
    return text;
}

}  // namespace Pegasus
