// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WqlMatch.h"

#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include <algorithm>
#include <optional>
#include <type_traits>

#include "CimText.h"
#include "Text.h"
#include "ValueVisitor.h"

namespace QZ {

using namespace Pegasus;

namespace {

// In this order: AND is the least of its parts, OR the greatest.
enum Truth { No, Unknown, Yes };

// Less than 0, 0 or more, as strcmp has it; nothing where the two cannot be compared.
using Ordering = std::optional<int>;

template <class T>
int _order(const T& left, const T& right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

// A value against a literal.
struct Comparison {
    const WqlLiteral& literal;

    Ordering operator()(Boolean truth) const {
        return literal.kind == WqlLiteral::Boolean
                   ? Ordering(_order<bool>(truth, literal.number != 0))
                   : std::nullopt;
    }
    Ordering operator()(const String& text) const {
        return literal.kind == WqlLiteral::String
                   ? Ordering(String::compare(text, make_String(literal.text)))
                   : std::nullopt;
    }
    Ordering operator()(const Char16& character) const {
        String text;
        text.append(character);
        return (*this)(text);
    }
    Ordering operator()(const CIMDateTime& moment) const {
        try {
            const CIMDateTime other(make_String(literal.text));
            return moment.equal(other) ? 0 : moment < other ? -1 : 1;
        } catch (const Exception&) {
            // An interval is neither before nor after a moment.
            return std::nullopt;
        }
    }
    template <class T, std::enable_if_t<std::is_floating_point_v<T>, int> = 0>
    Ordering operator()(T number) const {
        return _orderReal(double(number));
    }
    template <class T, std::enable_if_t<std::is_integral_v<T>, int> = 0>
    Ordering operator()(T number) const {
        if (literal.kind != WqlLiteral::Integer) {
            return _orderReal(double(number));
        }
        const bool isNegative = number < T(0);
        if (isNegative != literal.negative) {
            return isNegative ? -1 : 1;
        }
        // The lowest number's magnitude fits once it is unsigned.
        const std::uint64_t magnitude =
            isNegative ? ~std::uint64_t(std::int64_t(number)) + 1 : std::uint64_t(number);
        const int order = _order(magnitude, literal.number);
        return isNegative ? -order : order;
    }
    // Arrays, references and embedded objects.
    template <class T, std::enable_if_t<!std::is_arithmetic_v<T>, int> = 0>
    Ordering operator()(const T&) const {
        return std::nullopt;
    }

private:
    Ordering _orderReal(double number) const {
        const double other = literal.kind == WqlLiteral::Real
                                 ? literal.real
                                 : double(literal.number) * (literal.negative ? -1 : 1);
        const bool isNumber =
            literal.kind == WqlLiteral::Real || literal.kind == WqlLiteral::Integer;
        // What is no number is not ordered.
        return isNumber && number == number ? Ordering(_order(number, other)) : std::nullopt;
    }
};

bool _holds(int order, WqlOperator operation) {
    switch (operation) {
        case WqlOperator::Equal:
            return order == 0;
        case WqlOperator::NotEqual:
            return order != 0;
        case WqlOperator::Less:
            return order < 0;
        case WqlOperator::LessOrEqual:
            return order <= 0;
        case WqlOperator::Greater:
            return order > 0;
        default:
            return order >= 0;
    }
}

bool _isKindOf(const CIMName& name, const std::string& other, const ClassRepository& classes) {
    const ClassDeclaration* const declared = classes.find(make_string(name.getString()));
    return declared && classes.isKindOf(*declared, other);
}

// One indication, asked condition by condition.
class Matcher {
public:
    Matcher(const CIMInstance& indication, const ClassRepository& classes)
        : _indication(indication), _classes(classes) {}

    Truth operator()(const WqlCondition& condition) const {
        switch (condition.kind) {
            case WqlCondition::And:
            case WqlCondition::Or:
                return _joined(condition);
            case WqlCondition::Not:
                return Truth(Yes - (*this)(condition.parts[0]));
            case WqlCondition::IsNull:
                return _value(condition.property).isNull() ? Yes : No;
            case WqlCondition::IsA:
                return _isA(condition);
            default:
                return _compared(condition);
        }
    }

private:
    // Null, too, where the indication has no such property.
    CIMValue _value(const std::string& property) const {
        const Uint32 at = _indication.findProperty(CIMName(make_String(property)));
        return at == PEG_NOT_FOUND ? CIMValue() : _indication.getProperty(at).getValue();
    }

    Truth _joined(const WqlCondition& condition) const {
        const bool isAnd = condition.kind == WqlCondition::And;
        Truth all = isAnd ? Yes : No;
        for (const WqlCondition& part : condition.parts) {
            const Truth one = (*this)(part);
            all = isAnd ? std::min(all, one) : std::max(all, one);
        }
        return all;
    }

    Truth _isA(const WqlCondition& condition) const {
        if (condition.property.empty()) {
            return _isKindOf(_indication.getClassName(), condition.className, _classes) ? Yes : No;
        }
        const CIMValue value = _value(condition.property);
        if (value.isNull() || value.isArray()) {
            return Unknown;
        }
        CIMObject object;
        if (value.getType() == CIMTYPE_INSTANCE) {
            CIMInstance instance;
            value.get(instance);
            object = CIMObject(instance);
        } else if (value.getType() == CIMTYPE_OBJECT) {
            value.get(object);
        } else {
            return Unknown;
        }
        return _isKindOf(object.getClassName(), condition.className, _classes) ? Yes : No;
    }

    Truth _compared(const WqlCondition& condition) const {
        const CIMValue value = _value(condition.property);
        if (value.isNull()) {
            return Unknown;
        }
        const Ordering order = visitValue(value, Comparison{condition.literal});
        if (!order) {
            return Unknown;
        }
        return _holds(*order, condition.operation) ? Yes : No;
    }

    const CIMInstance& _indication;
    const ClassRepository& _classes;
};

}  // namespace

bool matchesWql(const WqlQuery& query, const CIMInstance& indication,
                const ClassRepository& classes) {
    return _isKindOf(indication.getClassName(), query.className, classes) &&
           Matcher(indication, classes)(query.condition) == Yes;
}

CIMInstance selectWql(const WqlQuery& query, const CIMInstance& indication) {
    CIMInstance selected = indication.clone();
    for (Uint32 i = selected.getPropertyCount(); i != 0 && !query.properties.empty(); --i) {
        const std::string name = make_string(selected.getProperty(i - 1).getName().getString());
        const bool isWanted =
            std::any_of(query.properties.begin(), query.properties.end(),
                        [&](const std::string& wanted) { return sameName(wanted, name); });
        if (!isWanted) {
            selected.removeProperty(i - 1);
        }
    }
    return selected;
}

}  // namespace QZ
