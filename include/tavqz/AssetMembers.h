/* SPDX-FileCopyrightText: 2026 the tavqz authors */
/* SPDX-License-Identifier: MIT */
#pragma once

/*
 * The fields that AssetFlat.h has functions for, as lists: each takes a macro X(RECORD, FIELD),
 * which stands for getRECORDFIELD and setRECORDFIELD. The lists of fields that are only read end in
 * _READ_ONLY.
 */

#define TAVQZ_ASSET_TEXTS(X)        \
    X(CSDetails, AssetNumber)       \
    X(CSDetails, AssetIdTag)        \
    X(CSDetails, OwnerName)         \
    X(CSDetails, OwnerPhone)        \
    X(CSDetails, OwnerPosition)     \
    X(CSDetails, OwnerDepartment)   \
    X(CSDetails, SystemLocation)    \
    X(CSDetails, KELPProfile)       \
    X(CSDetails, DeploymentProfile) \
    X(Lease, Lessor)                \
    X(Lease, Payment)               \
    X(Warranty, Cost)

#define TAVQZ_ASSET_TEXTS_READ_ONLY(X) \
    X(CSDetails, ProductName)          \
    X(CSDetails, Systemuuid)           \
    X(CSDetails, SystemSerialNumber)   \
    X(CSDetails, SystemModelNumber)    \
    X(CSDetails, SystemModelName)      \
    X(CSDetails, SystemName)           \
    X(CSDetails, Version)

#define TAVQZ_ASSET_DATES(X)           \
    X(CSDetails, LastInventoried)      \
    X(CSDetails, SystemPurchaseDate)   \
    X(CSDetails, KELPUpdateTime)       \
    X(CSDetails, DeploymentUpdateTime) \
    X(CSDetails, DateTime)             \
    X(Lease, StartDate)                \
    X(Lease, EndDate)                  \
    X(Warranty, EndDate)

#define TAVQZ_ASSET_BYTES(X) \
    X(Lease, LRF)            \
    X(Lease, Term)           \
    X(Warranty, Duration)    \
    X(Warranty, DurationUnit)

#define TAVQZ_ASSET_NUMBERS(X) \
    X(Lease, Buyout)           \
    X(Lease, FMV)

#define TAVQZ_ASSET_NUMBERS_READ_ONLY(X) X(CSDetails, AssetIdStringAreaSize)

/* Of a part: each stands for getPIFIELD. */
#define TAVQZ_PART_TEXTS(X) \
    X(Tag)                  \
    X(Manufacturer)         \
    X(Model)                \
    X(SerialNumber)         \
    X(Version)

/* Of a personalised pair: getCSDetailsPersonalizedDataFIELD and set… */
#define TAVQZ_PERSONALIZED_TEXTS(X) \
    X(Label)                        \
    X(Data)
