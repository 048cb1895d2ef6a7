// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofValues.h"

#include <utility>

namespace QZ {

namespace {

MofLiteral::Kind _kindOf(const MofToken& token) {
    switch (token.kind) {
        case MofToken::Integer:
            return MofLiteral::Integer;
        case MofToken::Real:
            return MofLiteral::Real;
        case MofToken::String:
            return MofLiteral::String;
        case MofToken::Char:
            return MofLiteral::Char;
        default:
            return MofLiteral::Null;
    }
}

MofLiteral _takeWord(MofCursor& cursor) {
    MofLiteral literal;
    literal.position = cursor.position();
    const bool isTrue = cursor.accept("true");
    if (isTrue || cursor.accept("false")) {
        literal.kind = MofLiteral::Boolean;
        literal.number = isTrue;
    } else if (!cursor.accept("null")) {
        cursor.expected("a value");
    }
    return literal;
}

MofLiteral _takeScalar(MofCursor& cursor) {
    MofLiteral literal;
    literal.position = cursor.position();
    literal.negative = cursor.accept('-');
    const bool isSigned = literal.negative || cursor.accept('+');
    literal.kind = _kindOf(cursor.token());
    if (isSigned && literal.kind != MofLiteral::Integer && literal.kind != MofLiteral::Real) {
        cursor.expected("a number");
    }
    if (literal.kind == MofLiteral::Null) {
        return _takeWord(cursor);
    }
    MofToken token = cursor.take();
    literal.number = token.number;
    literal.text = std::move(token.text);
    return literal;
}

MofLiteral _takeArray(MofCursor& cursor) {
    MofLiteral array;
    array.kind = MofLiteral::Array;
    array.position = cursor.position();
    cursor.expect('{');
    if (cursor.accept('}')) {
        return array;
    }
    do {
        array.elements.push_back(_takeScalar(cursor));
    } while (cursor.accept(','));
    cursor.expect('}');
    return array;
}

}  // namespace

MofLiteral takeMofLiteral(MofCursor& cursor) {
    return cursor.at('{') ? _takeArray(cursor) : _takeScalar(cursor);
}

Pegasus::CIMType takeMofType(MofCursor& cursor) {
    Pegasus::CIMType type = Pegasus::CIMTYPE_BOOLEAN;
    if (cursor.token().kind != MofToken::Identifier || !mofType(cursor.token().text, type)) {
        cursor.expected("a type");
    }
    cursor.take();
    return type;
}

bool takeMofFlavor(MofCursor& cursor, MofFlavor& flavor) {
    if (cursor.accept("translatable")) {
        flavor.isTranslatable = true;
        return true;
    }
    const bool isOverridable = cursor.accept("enableoverride");
    if (isOverridable || cursor.accept("disableoverride")) {
        flavor.isOverridable = isOverridable;
        return true;
    }
    const bool isToSubclass = cursor.accept("tosubclass");
    if (isToSubclass || cursor.accept("restricted")) {
        flavor.isToSubclass = isToSubclass;
        return true;
    }
    return false;
}

std::vector<MofQualifier> takeMofQualifiers(MofCursor& cursor) {
    std::vector<MofQualifier> list;
    if (!cursor.accept('[')) {
        return list;
    }
    do {
        MofQualifier qualifier;
        qualifier.position = cursor.position();
        qualifier.name = cursor.takeName("a qualifier");
        if (cursor.at('{')) {
            qualifier.value = _takeArray(cursor);
        } else if (cursor.accept('(')) {
            qualifier.value = takeMofLiteral(cursor);
            cursor.expect(')');
        }
        if (cursor.accept(':')) {
            do {
                if (!takeMofFlavor(cursor, qualifier.flavor)) {
                    cursor.expected("a flavor");
                }
            } while (!cursor.at(',') && !cursor.at(']'));
        }
        list.push_back(std::move(qualifier));
    } while (cursor.accept(','));
    cursor.expect(']');
    return list;
}

bool takeMofArrayBrackets(MofCursor& cursor, std::uint32_t& size) {
    if (!cursor.accept('[')) {
        return false;
    }
    const MofToken& token = cursor.token();
    if (token.kind == MofToken::Integer) {
        if (token.number == 0 || token.number > UINT32_MAX) {
            cursor.fail(token.position, "a size from 1 to 4294967295 expected");
        }
        size = std::uint32_t(cursor.take().number);
    }
    cursor.expect(']');
    return true;
}

}  // namespace QZ
