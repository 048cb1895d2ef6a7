// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <charconv>

#include "WqlQuery.h"

namespace QZ {

namespace {

std::string _quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        result += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return result + "\"";
}

// The shortest text that reads back as the same number, with what tells it from an integer.
std::string _real(double number) {
    char buffer[32];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, number);
    std::string text(buffer, error == std::errc() ? end : buffer);
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

std::string _literal(const WqlLiteral& literal) {
    switch (literal.kind) {
        case WqlLiteral::String:
            return _quoted(literal.text);
        case WqlLiteral::Integer:
            return (literal.negative ? "-" : "") + std::to_string(literal.number);
        case WqlLiteral::Real:
            return _real(literal.real);
        default:
            return literal.number != 0 ? "TRUE" : "FALSE";
    }
}

const char* _operator(WqlOperator operation) {
    static const char* const TEXTS[] = {" = ", " <> ", " < ", " <= ", " > ", " >= "};
    return TEXTS[std::size_t(operation)];
}

std::string _condition(const WqlCondition& condition) {
    switch (condition.kind) {
        case WqlCondition::Comparison:
            return condition.property + _operator(condition.operation) +
                   _literal(condition.literal);
        case WqlCondition::IsNull:
            return condition.property + " IS NULL";
        case WqlCondition::IsA:
            return (condition.property.empty() ? "__CLASS" : condition.property) + " ISA " +
                   _quoted(condition.className);
        case WqlCondition::Not:
            return "NOT (" + _condition(condition.parts[0]) + ")";
        default:
            break;
    }
    std::string text;
    for (const WqlCondition& part : condition.parts) {
        text += text.empty() ? "" : condition.kind == WqlCondition::And ? " AND " : " OR ";
        const bool isJoined = part.kind == WqlCondition::And || part.kind == WqlCondition::Or;
        text.append(isJoined ? "(" : "").append(_condition(part)).append(isJoined ? ")" : "");
    }
    return text;
}

}  // namespace

std::string wqlText(const WqlQuery& query) {
    std::string text = "SELECT ";
    for (std::size_t i = 0; i < query.properties.size(); ++i) {
        text.append(i == 0 ? "" : ", ").append(query.properties[i]);
    }
    text.append(query.properties.empty() ? "*" : "").append(" FROM ").append(query.className);
    const std::string condition = _condition(query.condition);
    return condition.empty() ? text : text.append(" WHERE ").append(condition);
}

}  // namespace QZ
