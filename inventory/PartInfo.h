// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// One part of the machine: its name among the parts, and what it says of itself. Texts are
// cleaned when the part is made: without control characters (codes 1 to 31) anywhere and without
// blanks at either end.
class PartInfo {
public:
    PartInfo(std::string manufacturer, std::string model, std::string serial, std::string tag,
             std::string version);

    void getManufacturer(std::string& text) const { text = _manufacturer; }
    void getModel(std::string& text) const { text = _model; }
    void getSerialNumber(std::string& text) const { text = _serialNumber; }
    void getTag(std::string& text) const { text = _tag; }
    void getVersion(std::string& text) const { text = _version; }

private:
    std::string _manufacturer;
    std::string _model;
    std::string _serialNumber;
    std::string _tag;
    std::string _version;
};

}  // namespace QZ
