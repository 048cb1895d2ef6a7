// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimText.h"
#include "MofText.h"
#include "Output.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Declarations with an empty line between.
template <class List, class Write>
std::string _joined(const List& list, Write write) {
    std::string text;
    for (const auto& element : list) {
        text += text.empty() ? "" : "\n";
        text += write(element);
    }
    return text;
}

std::string _keys(const CIMObjectPath& path) {
    std::string text = "instance of " + make_string(path.getClassName().getString()) + " {\n";
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        const std::string value = make_string(keys[i].getValue());
        const bool isBare = keys[i].getType() == CIMKeyBinding::NUMERIC ||
                            keys[i].getType() == CIMKeyBinding::BOOLEAN;
        text += "    " + make_string(keys[i].getName().getString()) + " = " +
                (isBare ? value : mofString(value)) + ";\n";
    }
    return text + "};\n";
}

}  // namespace

std::string MofOutput::instances(const std::vector<CIMInstance>& list) const {
    return _joined(list, mofInstance);
}

std::string MofOutput::names(const std::vector<CIMObjectPath>& list) const {
    return _joined(list, _keys);
}

std::string MofOutput::classes(const Schema& schema) const {
    return _joined(schema.classes.classes(),
                   [](const auto& declared) { return mofClass(*declared); });
}

}  // namespace QZ
