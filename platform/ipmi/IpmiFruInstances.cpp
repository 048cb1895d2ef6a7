// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <initializer_list>

#include "Bmc.h"
#include "IpmiFru.h"

namespace QZ {

namespace {

// The first text that says something; makers fill fields with blanks.
std::string firstOf(std::initializer_list<const FruField*> fields) {
    for (const FruField* const field : fields) {
        if (field->text.find_first_not_of(' ') != std::string::npos)
            return field->text;
    }
    return {};
}

IpmiFru::Values valuesOf(const BmcFru& fru) {
    static const FruChassis NoChassis;
    static const FruBoard NoBoard;
    static const FruProduct NoProduct;
    const FruInventory& data = fru.inventory;
    const FruChassis& chassis = data.chassis ? *data.chassis : NoChassis;
    const FruBoard& board = data.board ? *data.board : NoBoard;
    const FruProduct& product = data.product ? *data.product : NoProduct;

    IpmiFru::Values values;
    values.number = firstOf({&product.partNumber, &board.partNumber, &chassis.partNumber});
    values.identifyingNumber = values.number;
    values.vendor = firstOf({&product.manufacturer, &board.manufacturer});
    values.name = firstOf({&product.name, &board.name});
    values.description = fru.locator.name.empty() ? values.name : fru.locator.name;
    if (values.name.empty())
        values.name = values.description;
    values.entityId = fru.locator.entity.id;
    return values;
}

bool saysNothing(const IpmiFru::Values& values) {
    return values.number.empty() && values.identifyingNumber.empty() && values.vendor.empty() &&
           values.name.empty();
}

}  // namespace

std::vector<IpmiFru> GetIpmiFruInstances() {
    std::vector<IpmiFru> instances;
    for (const BmcFru& fru : Bmc::machine().getFrus()) {
        const FruInventory& data = fru.inventory;
        if (!data.chassis && !data.board && !data.product)
            continue;
        IpmiFru::Values values = valuesOf(fru);
        if (!saysNothing(values))
            instances.emplace_back(std::move(values));
    }
    return instances;
}

}  // namespace QZ
