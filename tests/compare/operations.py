# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""The requests that both servers get. None changes a class."""

import cimxml

MODEL = "root/tavqz"
CLASSES = ("TAVIRA_ComputerSystemDetails", "TAVIRA_Lease", "TAVIRA_Warranty",
           "TAVIRA_SerialNumberInformation", "TAVIRA_VigilComponentVPD",
           "TAVIRA_VigilMachineLevelVPD", "TAVIRA_VigilManagementProcessorVPD",
           "TAVIRA_VigilPostBiosVPD", "TAVIRA_VigilPresent", "TAVIRA_VigilWatchdog",
           "TAVIRA_VigilSystemState", "TAVIRA_FRU")
STANDARD = ("CIM_ManagedElement", "CIM_Product", "CIM_LogicalDevice", "CIM_AlertIndication")
LEASE = {"Identifier": "TAVIRA|CorvanaAgent|Lease"}
WARRANTY = {"Identifier": "TAVIRA|CorvanaAgent|Warranty"}


def _flags(**flags):
    return "".join(cimxml.value(name, str(flag).lower()) for name, flag in flags.items())


def _lease(*properties):
    return cimxml.modified_instance("TAVIRA_Lease", LEASE, properties)


def _details(keys, *properties):
    return cimxml.modified_instance("TAVIRA_ComputerSystemDetails", keys, properties)


def _instances():
    for name in CLASSES + STANDARD[:3]:
        yield f"instances of {name}", "EnumerateInstances", MODEL, cimxml.class_name(name)
        yield (f"names of {name}", "EnumerateInstanceNames", MODEL, cimxml.class_name(name))
    product = cimxml.class_name("CIM_Product")
    lease = cimxml.class_name("TAVIRA_Lease")
    for flag in ("LocalOnly", "DeepInheritance", "IncludeQualifiers", "IncludeClassOrigin"):
        for state in (False, True):
            yield (f"products, {flag} {state}", "EnumerateInstances", MODEL,
                   product + _flags(**{flag: state}))
            yield (f"leases, {flag} {state}", "EnumerateInstances", MODEL,
                   lease + _flags(**{flag: state}))
    for chosen in ([], ["Lessor"], ["lessor", "Nothing"], ["Identifier", "Identifier"]):
        yield (f"leases, properties {chosen}", "EnumerateInstances", MODEL,
               lease + cimxml.values("PropertyList", chosen))
    yield ("instances by a name in lower case", "EnumerateInstances", MODEL,
           cimxml.class_name("tavira_lease"))
    for name in ("TAVIRA_Nothing", "TAVIRA_VigilVitalProductData"):
        yield f"instances of {name}", "EnumerateInstances", MODEL, cimxml.class_name(name)
    yield "instances in no namespace", "EnumerateInstances", "root/nowhere", lease
    yield "instances of no class", "EnumerateInstances", MODEL, ""


def _single():
    lease = cimxml.instance_name("TAVIRA_Lease", LEASE)
    yield "the lease", "GetInstance", MODEL, lease
    for flag in ("LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"):
        yield (f"the lease, {flag}", "GetInstance", MODEL, lease + _flags(**{flag: True}))
    yield ("the lease's lessor", "GetInstance", MODEL,
           lease + cimxml.values("PropertyList", ["Lessor"]))
    yield ("a lease that is not there", "GetInstance", MODEL,
           cimxml.instance_name("TAVIRA_Lease", {"Identifier": "other"}))
    yield ("a lease without keys", "GetInstance", MODEL, cimxml.instance_name("TAVIRA_Lease", {}))
    yield ("a lease with a wrong key", "GetInstance", MODEL,
           cimxml.instance_name("TAVIRA_Lease", {"Other": "x"}))
    yield ("an instance of no class", "GetInstance", MODEL,
           cimxml.instance_name("TAVIRA_Nothing", LEASE))
    yield ("the lease as a product", "GetInstance", MODEL,
           cimxml.instance_name("CIM_Product", LEASE))
    for name in ("Lessor", "lessor", "Identifier", "Nothing", "EndDate"):
        yield (f"the lease's {name} alone", "GetProperty", MODEL,
               lease + cimxml.value("PropertyName", name))


def _changes(details):
    lease = cimxml.instance_name("TAVIRA_Lease", LEASE)
    steps = (
        ("set the lessor", "ModifyInstance", _lease(("Lessor", "string", "Acme & <Sons>"))),
        ("set a number", "ModifyInstance", _lease(("Term", "uint8", "36"))),
        ("set a date", "ModifyInstance",
         _lease(("EndDate", "datetime", "20270131000000.000000+000"))),
        ("set with a list", "ModifyInstance",
         _lease(("Lessor", "string", "B"), ("Payment", "string", "9"))
         + cimxml.values("PropertyList", ["Payment"])),
        ("set with a list of nothing", "ModifyInstance",
         _lease(("Lessor", "string", "C")) + cimxml.values("PropertyList", [])),
        ("set with an unknown name in the list", "ModifyInstance",
         _lease(("Lessor", "string", "D")) + cimxml.values("PropertyList", ["Nothing"])),
        ("set to null", "ModifyInstance", _lease(("Payment", "string", None))),
        ("clear a date", "ModifyInstance",
         _lease(("EndDate", "datetime", "00000000000000.000000:000"))),
        ("set what is too large", "ModifyInstance", _lease(("Term", "uint8", "256"))),
        ("set with another type", "ModifyInstance", _lease(("Lessor", "uint8", "1"))),
        ("set what is not there", "ModifyInstance", _lease(("Nothing", "string", "x"))),
        ("set a key", "ModifyInstance", _lease(("Identifier", "string", "x"))),
        ("set another lease", "ModifyInstance",
         cimxml.modified_instance("TAVIRA_Lease", {"Identifier": "x"},
                                  [("Lessor", "string", "E")])),
        ("set a serial number", "ModifyInstance",
         cimxml.modified_instance("TAVIRA_SerialNumberInformation", {"Identifier": "x"},
                                  [("Model", "string", "x")])),
        ("set a watchdog", "ModifyInstance",
         cimxml.modified_instance("TAVIRA_VigilWatchdog", {"DeviceID": "x"},
                                  [("TimeoutInterval", "uint32", "5")])),
        ("set labels", "ModifyInstance",
         _details(details, ("PersonalizedLabel1", "string", "Shelf"),
                  ("PersonalizedData1", "string", "7"))),
        ("set the owner alone", "ModifyInstance",
         _details(details, ("PrimaryOwnerName", "string", "J. Doe"))),
        ("set the lessor by itself", "SetProperty",
         lease + cimxml.value("PropertyName", "Lessor") + cimxml.value("NewValue", "F")),
        ("set what is not there by itself", "SetProperty",
         lease + cimxml.value("PropertyName", "Nothing") + cimxml.value("NewValue", "F")),
        ("set a number by itself that is none", "SetProperty",
         lease + cimxml.value("PropertyName", "Term") + cimxml.value("NewValue", "many")),
        ("create a lease", "CreateInstance",
         cimxml.new_instance("TAVIRA_Lease", [("Identifier", "string", "x")])),
        ("create an instance of no class", "CreateInstance",
         cimxml.new_instance("TAVIRA_Nothing", [("Identifier", "string", "x")])),
        ("delete the lease", "DeleteInstance", lease),
        ("delete an instance of no class", "DeleteInstance",
         cimxml.instance_name("TAVIRA_Nothing", LEASE)),
    )
    for name, operation, parameters in steps:
        yield name, operation, MODEL, parameters
        yield (f"{name}: then", "EnumerateInstances", MODEL,
               cimxml.class_name("TAVIRA_ComputerSystemDetails" if "label" in name
                                 or "owner" in name else "TAVIRA_Lease"))


def _classes():
    for name in CLASSES + STANDARD:
        yield f"class {name}", "GetClass", MODEL, cimxml.class_name(name)
    name = cimxml.class_name("TAVIRA_VigilWatchdog")
    for flag in ("LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"):
        for state in (False, True):
            yield (f"class, {flag} {state}", "GetClass", MODEL, name + _flags(**{flag: state}))
    for chosen in ([], ["DeviceID"], ["ElementName"], ["Nothing"]):
        yield (f"class, properties {chosen}", "GetClass", MODEL,
               name + _flags(LocalOnly=False) + cimxml.values("PropertyList", chosen))
    yield "no class", "GetClass", MODEL, cimxml.class_name("TAVIRA_Nothing")
    for operation in ("EnumerateClasses", "EnumerateClassNames"):
        for start in (None, "CIM_ManagedElement", "TAVIRA_Lease", "TAVIRA_Nothing"):
            for deep in (None, False, True):
                parameters = cimxml.class_name(start) if start else ""
                parameters += "" if deep is None else _flags(DeepInheritance=deep)
                yield (f"{operation} {start} deep {deep}", operation, MODEL, parameters)
    yield ("EnumerateClasses in full", "EnumerateClasses", MODEL,
           _flags(DeepInheritance=True, LocalOnly=False, IncludeClassOrigin=True))
    yield "qualifiers", "EnumerateQualifiers", MODEL, ""
    for name in ("Key", "key", "Nothing"):
        yield (f"qualifier {name}", "GetQualifier", MODEL,
               cimxml.value("QualifierName", name))


def _refusals():
    lease = cimxml.class_name("TAVIRA_Lease")
    yield "an unknown operation", "EnumerateNothing", MODEL, lease
    yield "an unknown parameter", "EnumerateInstances", MODEL, lease + _flags(Nothing=True)
    yield "a parameter twice", "EnumerateInstances", MODEL, lease + lease
    yield ("a flag that is none", "EnumerateInstances", MODEL,
           lease + cimxml.value("LocalOnly", "perhaps"))
    yield "a name that is none", "EnumerateInstances", MODEL, cimxml.class_name("1 2")


def _damaged():
    """Requests that are wrong beneath the operation: (name, body, headers)."""
    operation = "EnumerateInstances"
    body = cimxml.call(operation, MODEL, cimxml.class_name("TAVIRA_Lease"))
    headers = cimxml.headers(operation, MODEL)
    for name, old, new in (
            ("no end", "</CIM>", ""),
            ("an unknown element", "SIMPLEREQ>", "SIMPLE>"),
            ("another CIM version", 'CIMVERSION="2.0"', 'CIMVERSION="3.0"'),
            ("another DTD version", 'DTDVERSION="2.0"', 'DTDVERSION="3.0"'),
            ("another protocol version", 'PROTOCOLVERSION="1.0"', 'PROTOCOLVERSION="2.0"'),
            ("no message id", 'ID="1" ', ""),
            ("a response", "MESSAGE", "MESSAGES"),
            ("no namespace", '<NAMESPACE NAME="root"/><NAMESPACE NAME="tavqz"/>', "")):
        yield name, body.replace(old, new), headers
    yield "nothing", "", headers
    yield "another method in the header", body, {**headers, "CIMMethod": "GetInstance"}
    yield "another namespace in the header", body, {**headers, "CIMObject": "root%2Fcimv2"}
    yield "another operation in the header", body, {**headers, "CIMOperation": "Dance"}
    yield "no operation in the header", body, {"CIMObject": headers["CIMObject"]}


def all_requests(details):
    """(name, body, headers) of each; `details` are the keys of the machine's computer system."""
    for part in (_instances(), _single(), _changes(details), _classes(), _refusals()):
        for name, operation, namespace, parameters in part:
            yield (name, cimxml.call(operation, namespace, parameters),
                   cimxml.headers(operation, namespace))
    yield from _damaged()
