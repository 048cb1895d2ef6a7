// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ClassRepository.h"
#include "Error.h"

namespace QZ {

// A query that is none, or that makes no sense for its class: what is wrong, in a sentence.
class WqlError : public Error {
public:
    using Error::Error;
};

struct WqlLiteral {
    enum Kind { String, Integer, Real, Boolean };

    Kind kind = String;
    std::string text;          // String: UTF-8
    bool negative = false;     // Integer
    std::uint64_t number = 0;  // Integer: magnitude; Boolean: 0 or 1
    double real = 0;           // Real
};

enum class WqlOperator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

// One condition, or several that are joined.
struct WqlCondition {
    enum Kind {
        And,  // of all parts
        Or,
        Not,  // of the one part
        Comparison,
        IsNull,
        IsA,  // the indication, or the instance in a property, is of a class or below it
    };

    Kind kind = And;
    std::vector<WqlCondition> parts;
    std::string property;  // empty with IsA: the indication itself
    WqlOperator operation = WqlOperator::Equal;
    WqlLiteral literal;
    std::string className;  // IsA
};

// Which indications are wanted, and what of them.
struct WqlQuery {
    std::vector<std::string> properties;  // none: all
    std::string className;
    WqlCondition condition;  // And of nothing where there is no WHERE
};

// Reads "SELECT *|property, ... FROM Class [WHERE condition]". A condition compares a property with
// a literal by =, <>, <, <=, > or >=, asks whether it IS [NOT] NULL, or whether the indication
// (named by its class or as __CLASS) or an instance that a property holds ISA class; conditions are
// joined by AND, OR, NOT and parentheses. Keywords ignore case. Strings stand in single or double
// quotes, with \\, \', \" or the quote doubled for themselves. Throws WqlError, also for more than
// 16 KiB or 64 levels of parentheses.
WqlQuery parseWql(std::string_view text);

// The query as text that reads back as the same.
std::string wqlText(const WqlQuery& query);

// Holds the query against its class: the class and what it names are there, and what is compared
// can be. Throws WqlError.
void checkWql(const WqlQuery& query, const ClassRepository& classes);

}  // namespace QZ
