# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""Differences that stay: (pattern of the request's whole name, reason). docs/openpegasus.md tells
about them."""

import re

KNOWN = tuple((re.compile(pattern), reason) for pattern, reason in (
    (r"(products|leases), IncludeQualifiers True|the lease, IncludeQualifiers",
     "instances carry their class's qualifiers where they are asked for"),
    (r"(products|leases), IncludeClassOrigin True|the lease, IncludeClassOrigin",
     "instances carry their class's origins where they are asked for"),
    (r"instances by a name in lower case", "names are answered as their class is declared"),
    (r"a lease (that is not there|without keys|with a wrong key)",
     "an instance that is not delivered is not found, instead of a failure"),
    (r"the lease's EndDate alone", "a property that the class has and nobody set is null"),
    (r"set what is too large|a flag that is none|a name that is none",
     "a wrong value is an invalid parameter, instead of an invalid request"),
    (r"set a number by itself that is none", "a value of another type is a type mismatch"),
    (r"EnumerateClass(es|Names) (None|CIM_ManagedElement) deep .*|EnumerateClasses in full",
     "the model's namespace takes subscriptions too, and has their classes"),
    (r"class (TAVIRA_(ComputerSystemDetails|FRU|Vigil(Present|Watchdog|SystemState))"
     r"|CIM_AlertIndication)"
     r"|class, (LocalOnly .*|Include(Qualifiers True|ClassOrigin .*)|properties \['ElementName'\])",
     "inherited qualifiers are kept in overriding properties, and told to be propagated"),
    (r"an unknown parameter", "it is an invalid parameter, as DSP0200 has it"),
    (r"another protocol version|nothing|another operation in the header",
     "each has the status and CIMError that DSP0200 gives it"),
))
