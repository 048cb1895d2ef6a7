// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMName.h>

#include <charconv>
#include <utility>

#include "CimText.h"
#include "Text.h"
#include "WqlLexer.h"
#include "WqlQuery.h"

namespace QZ {

namespace {

constexpr std::size_t LONGEST = std::size_t(16) * 1024;
constexpr unsigned DEEPEST = 64;

// What the indication itself may be called.
constexpr const char* SELF = "__CLASS";

bool _isInteger(const std::string& text) {
    return text.find_first_of(".eE") == std::string::npos;
}

WqlOperator _mirrored(WqlOperator operation) {
    switch (operation) {
        case WqlOperator::Less:
            return WqlOperator::Greater;
        case WqlOperator::LessOrEqual:
            return WqlOperator::GreaterOrEqual;
        case WqlOperator::Greater:
            return WqlOperator::Less;
        case WqlOperator::GreaterOrEqual:
            return WqlOperator::LessOrEqual;
        default:
            return operation;
    }
}

// Reads one query, token by token.
class Parser {
public:
    explicit Parser(std::string_view text) : _lexer(text), _token(_lexer.next()) {}

    WqlQuery query() {
        WqlQuery query;
        _expect("SELECT");
        std::vector<std::string> properties = _properties();
        _expect("FROM");
        query.className = _className = _name("a class");
        for (const std::string& property : properties) {
            query.properties.push_back(_unqualified(property));
        }
        if (_accept("WHERE")) {
            query.condition = _or();
        }
        if (_token.kind != WqlToken::End) {
            _expected(query.condition.parts.empty() && query.condition.kind == WqlCondition::And
                          ? "WHERE or the end"
                          : "AND, OR or the end");
        }
        return query;
    }

private:
    [[noreturn]] void _expected(const std::string& what) const {
        const std::string found =
            _token.kind == WqlToken::End ? "the end" : "\"" + _token.text + "\"";
        throw WqlError("character " + std::to_string(_token.position + 1) +
                       " of the query: " + what + " expected, not " + found);
    }

    WqlToken _take() { return std::exchange(_token, _lexer.next()); }

    bool _at(const char* word) const {
        return _token.kind == WqlToken::Name && sameName(_token.text, word);
    }
    bool _at(char punctuation) const {
        return _token.kind == WqlToken::Punctuation && _token.text == std::string(1, punctuation);
    }
    template <class What>
    bool _accept(What what) {
        const bool isThere = _at(what);
        if (isThere) {
            _take();
        }
        return isThere;
    }
    void _expect(const char* word) {
        if (!_accept(word)) {
            _expected(word);
        }
    }

    std::string _name(const char* what) {
        static const char* const RESERVED[] = {"SELECT", "FROM", "WHERE", "AND",  "OR",   "NOT",
                                               "IS",     "ISA",  "NULL",  "TRUE", "FALSE"};
        for (const char* const word : RESERVED) {
            if (_at(word)) {
                _expected(what);
            }
        }
        if (_token.kind != WqlToken::Name || !Pegasus::CIMName::legal(make_String(_token.text))) {
            _expected(what);
        }
        return _take().text;
    }

    // "Property", or "Class.Property", whose class is looked at when it is known.
    std::string _qualifiedName() {
        std::string name = _name("a property");
        if (_accept('.')) {
            name.append(".").append(_name("a property"));
        }
        return name;
    }

    std::string _unqualified(const std::string& name) const {
        const std::size_t dot = name.find('.');
        if (dot == std::string::npos) {
            return name;
        }
        if (!sameName(name.substr(0, dot), _className)) {
            throw WqlError("what stands before a \".\" is the class of the query, " + _className +
                           ", not " + name.substr(0, dot));
        }
        return name.substr(dot + 1);
    }

    std::vector<std::string> _properties() {
        std::vector<std::string> names;
        if (_accept('*')) {
            return names;
        }
        do {
            names.push_back(_qualifiedName());
        } while (_accept(','));
        return names;
    }

    // Those that are joined by a word, or the only one itself.
    WqlCondition _joined(WqlCondition::Kind kind, const char* word,
                         WqlCondition (Parser::*part)()) {
        WqlCondition first = (this->*part)();
        if (!_at(word)) {
            return first;
        }
        WqlCondition all;
        all.kind = kind;
        all.parts.push_back(std::move(first));
        while (_accept(word)) {
            all.parts.push_back((this->*part)());
        }
        return all;
    }

    WqlCondition _or() { return _joined(WqlCondition::Or, "OR", &Parser::_and); }
    WqlCondition _and() { return _joined(WqlCondition::And, "AND", &Parser::_not); }

    WqlCondition _not() {
        if (++_depth > DEEPEST) {
            throw WqlError("the query has more than " + std::to_string(DEEPEST) +
                           " conditions within one another");
        }
        WqlCondition condition;
        if (_accept("NOT")) {
            condition = _negated(_not());
        } else if (_accept('(')) {
            condition = _or();
            if (!_accept(')')) {
                _expected("\")\"");
            }
        } else {
            condition = _test();
        }
        --_depth;
        return condition;
    }

    static WqlCondition _negated(WqlCondition part) {
        WqlCondition condition;
        condition.kind = WqlCondition::Not;
        condition.parts.push_back(std::move(part));
        return condition;
    }

    bool _atLiteral() const {
        return _token.kind == WqlToken::String || _token.kind == WqlToken::Number || _at("TRUE") ||
               _at("FALSE");
    }

    // One test of a property, of its own.
    WqlCondition _test() {
        WqlCondition condition;
        condition.kind = WqlCondition::Comparison;
        if (_atLiteral()) {
            condition.literal = _literal();
            condition.operation = _mirrored(_operator());
            condition.property = _unqualified(_qualifiedName());
            return condition;
        }
        const std::string name = _qualifiedName();
        if (_accept("ISA")) {
            condition.kind = WqlCondition::IsA;
            condition.className = _isaClass();
            const bool isSelf = sameName(name, SELF) || sameName(name, _className);
            condition.property = isSelf ? std::string() : _unqualified(name);
            return condition;
        }
        condition.property = _unqualified(name);
        if (_accept("IS")) {
            const bool isNot = _accept("NOT");
            _expect("NULL");
            condition.kind = WqlCondition::IsNull;
            return isNot ? _negated(std::move(condition)) : condition;
        }
        condition.operation = _operator();
        if (!_atLiteral()) {
            _expected("a string, a number, TRUE or FALSE");
        }
        condition.literal = _literal();
        return condition;
    }

    std::string _isaClass() {
        if (_token.kind == WqlToken::String && Pegasus::CIMName::legal(make_String(_token.text))) {
            return _take().text;
        }
        return _name("a class");
    }

    WqlOperator _operator() {
        static const std::pair<const char*, WqlOperator> OPERATORS[] = {
            {"=", WqlOperator::Equal},   {"<>", WqlOperator::NotEqual},
            {"<", WqlOperator::Less},    {"<=", WqlOperator::LessOrEqual},
            {">", WqlOperator::Greater}, {">=", WqlOperator::GreaterOrEqual},
        };
        for (const auto& [text, operation] : OPERATORS) {
            if (_token.kind == WqlToken::Punctuation && _token.text == text) {
                _take();
                return operation;
            }
        }
        _expected("a comparison");
    }

    WqlLiteral _literal() {
        const WqlToken token = _take();
        WqlLiteral literal;
        if (token.kind == WqlToken::String) {
            literal.text = token.text;
        } else if (token.kind == WqlToken::Name) {
            literal.kind = WqlLiteral::Boolean;
            literal.number = sameName(token.text, "TRUE") ? 1 : 0;
        } else {
            _readNumber(token.text, literal);
        }
        return literal;
    }

    static void _readNumber(const std::string& text, WqlLiteral& literal) {
        literal.negative = text[0] == '-';
        const char* const begin = text.data() + (text[0] == '-' || text[0] == '+' ? 1 : 0);
        const char* const end = text.data() + text.size();
        const bool isInteger = _isInteger(text);
        literal.kind = isInteger ? WqlLiteral::Integer : WqlLiteral::Real;
        const std::from_chars_result result = isInteger
                                                  ? std::from_chars(begin, end, literal.number)
                                                  : std::from_chars(begin, end, literal.real);
        if (result.ec != std::errc() || result.ptr != end) {
            throw WqlError("the number " + text + " is out of range");
        }
        if (!isInteger && literal.negative) {
            literal.real = -literal.real;
        }
        literal.negative = literal.negative && isInteger && literal.number != 0;
    }

    WqlLexer _lexer;
    WqlToken _token;
    std::string _className;
    unsigned _depth = 0;
};

}  // namespace

WqlQuery parseWql(std::string_view text) {
    if (text.size() > LONGEST) {
        throw WqlError("the query is longer than " + std::to_string(LONGEST) + " bytes");
    }
    return Parser(text).query();
}

}  // namespace QZ
