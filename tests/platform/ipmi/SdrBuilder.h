// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "SdrDecoder.h"

// Makes sensor data records (IPMI 2.0, chapter 43), header included, with a name in Latin-1.

std::string fruLocatorRecord(const QZ::FruLocator& locator);
std::string controllerLocatorRecord(const QZ::ControllerLocator& locator);

// Type: 1 full, 2 compact, 3 event-only.
std::string sensorRecord(unsigned type, const QZ::SensorRecord& sensor);

// The same record with another name, from a type/length byte and what follows it.
std::string renamedRecord(std::string record, unsigned namePlace, unsigned typeLength,
                          const std::string& bytes);

// A locator of a logical unit of the BMC's.
QZ::FruLocator fruLocator(unsigned record, unsigned fruId, unsigned entity,
                          const std::string& name);
