// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <optional>
#include <string>
#include <string_view>

namespace QZ {

// A CIM instance with its path as text for people and back, every type and null included:
//
//   instance of TAVIRA_FRU {
//     path TAVIRA_FRU {namespace "root/tavqz"; key string FRUNumber = "39M4";};
//     string FRUNumber = "39M4";
//     uint8 Slots[] = {1, 2};
//     datetime Since = "20270131083000.000000+060";
//     reference System of CIM_System = path CIM_System {key string Name = "rack";};
//     string Vendor = null;
//   };
//
// Text is UTF-8; \" \\ \n \r \t and \uXXXX stand for what would not survive an editor. Qualifiers
// and class origins belong to the class and are left out. An instance may hold instances,
// DeepestInstance of them in one another.

constexpr int DeepestInstance = 8;

// The lines of an instance; only the first and the last begin at the margin, and the last is "};".
// Throws Error for what the form does not have: a class as a value, instances that are too deep.
std::string composeInstance(const Pegasus::CIMInstance& instance);

// Nothing where the text is not an instance in every character.
std::optional<Pegasus::CIMInstance> parseInstance(std::string_view text);

}  // namespace QZ
