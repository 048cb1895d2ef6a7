// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// How a qualifier is passed on and whether it may be overridden: a set of flags.
class PEGASUS_COMMON_LINKAGE CIMFlavor {
public:
    CIMFlavor() = default;

    void addFlavor(const CIMFlavor& flavor);
    void removeFlavor(const CIMFlavor& flavor);
    // Whether every flag of `flavor` is set; always true of NONE.
    Boolean hasFlavor(const CIMFlavor& flavor) const;
    Boolean equal(const CIMFlavor& flavor) const;
    CIMFlavor operator+(const CIMFlavor& flavor) const;

    // The names of the flags that are set, separated by blanks.
    String toString() const;

    static const CIMFlavor NONE;
    static const CIMFlavor OVERRIDABLE;
    static const CIMFlavor ENABLEOVERRIDE;
    static const CIMFlavor DISABLEOVERRIDE;
    static const CIMFlavor TOSUBCLASS;
    static const CIMFlavor RESTRICTED;
    static const CIMFlavor TOINSTANCE;
    static const CIMFlavor TRANSLATABLE;
    static const CIMFlavor DEFAULTS;
    static const CIMFlavor TOSUBELEMENTS;

private:
    constexpr explicit CIMFlavor(Uint32 bits) : _bits(bits) {}

    Uint32 _bits = 0;
};

}  // namespace Pegasus
