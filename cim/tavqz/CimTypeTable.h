// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

// The types that a CIM value may have, as X(C++ type, how it is passed, CIMType), in the order of
// CIMType: one table for all that exists once per type.
#define TAVQZ_CIM_TYPES(X)                                    \
    X(Boolean, Boolean, CIMTYPE_BOOLEAN)                      \
    X(Uint8, Uint8, CIMTYPE_UINT8)                            \
    X(Sint8, Sint8, CIMTYPE_SINT8)                            \
    X(Uint16, Uint16, CIMTYPE_UINT16)                         \
    X(Sint16, Sint16, CIMTYPE_SINT16)                         \
    X(Uint32, Uint32, CIMTYPE_UINT32)                         \
    X(Sint32, Sint32, CIMTYPE_SINT32)                         \
    X(Uint64, Uint64, CIMTYPE_UINT64)                         \
    X(Sint64, Sint64, CIMTYPE_SINT64)                         \
    X(Real32, Real32, CIMTYPE_REAL32)                         \
    X(Real64, Real64, CIMTYPE_REAL64)                         \
    X(Char16, const Char16&, CIMTYPE_CHAR16)                  \
    X(String, const String&, CIMTYPE_STRING)                  \
    X(CIMDateTime, const CIMDateTime&, CIMTYPE_DATETIME)      \
    X(CIMObjectPath, const CIMObjectPath&, CIMTYPE_REFERENCE) \
    X(CIMObject, const CIMObject&, CIMTYPE_OBJECT)            \
    X(CIMInstance, const CIMInstance&, CIMTYPE_INSTANCE)
