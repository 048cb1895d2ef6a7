// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <memory>
#include <string>
#include <vector>

#include "Schema.h"

namespace QZ {

// The forms in which a result is written. All are UTF-8 and end with a line break; a property that
// an instance does not have is nowhere in its form.

// A rendition of each kind of result. Instances may be of several classes.
class Output {
public:
    virtual ~Output() = default;

    virtual std::string instances(const std::vector<Pegasus::CIMInstance>& list) const = 0;
    virtual std::string names(const std::vector<Pegasus::CIMObjectPath>& list) const = 0;
    virtual std::string classes(const Schema& schema) const = 0;
};

// That of a format's name: "json", "csv", "mof", else for people.
std::unique_ptr<Output> makeOutput(const std::string& format);

// For people at a terminal: a line per instance where that fits, else a line per property. Nothing
// in it can steer the terminal.
class TableOutput : public Output {
public:
    std::string instances(const std::vector<Pegasus::CIMInstance>& list) const override;
    std::string names(const std::vector<Pegasus::CIMObjectPath>& list) const override;
    std::string classes(const Schema& schema) const override;
};

// Instances are an array of {"path": text, "properties": {name: value}}: null for null, dates as
// text in the CIM form, references as paths, embedded objects as {"class", "properties"}. Names are
// an array of paths. Classes are an array of {"name", "superclass", "provider", "properties":
// [{"name", "type", "array", "key", "writable"}]}, superclass and provider null where there is
// none.
class JsonOutput : public Output {
public:
    std::string instances(const std::vector<Pegasus::CIMInstance>& list) const override;
    std::string names(const std::vector<Pegasus::CIMObjectPath>& list) const override;
    std::string classes(const Schema& schema) const override;
};

// An instance as an element of JsonOutput's array, all of it on one line.
std::string jsonLine(const Pegasus::CIMInstance& instance);

// RFC 4180 with a header line. Instances have the columns "path" and one for each property that any
// of them has; null and absent are both empty.
class CsvOutput : public Output {
public:
    std::string instances(const std::vector<Pegasus::CIMInstance>& list) const override;
    std::string names(const std::vector<Pegasus::CIMObjectPath>& list) const override;
    std::string classes(const Schema& schema) const override;
};

// Declarations that parseMof() reads back. A name is an instance with its keys alone.
class MofOutput : public Output {
public:
    std::string instances(const std::vector<Pegasus::CIMInstance>& list) const override;
    std::string names(const std::vector<Pegasus::CIMObjectPath>& list) const override;
    std::string classes(const Schema& schema) const override;
};

}  // namespace QZ
