// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofParser.h"

#include <utility>

#include "FileContent.h"
#include "MofCursor.h"
#include "MofValues.h"

namespace QZ {

namespace {

void _skipPragma(MofCursor& cursor) {
    cursor.take();
    if (cursor.at("include") || cursor.at("namespace")) {
        cursor.fail(cursor.position(), "#pragma " + cursor.token().text + " is not supported");
    }
    cursor.takeName("a pragma's name");
    cursor.expect('(');
    if (cursor.token().kind != MofToken::String) {
        cursor.expected("a string");
    }
    cursor.take();
    cursor.expect(')');
}

unsigned _takeScope(MofCursor& cursor) {
    static constexpr struct {
        const char* name;
        unsigned scope;
    } scopes[] = {{"class", SCOPE_CLASS},           {"association", SCOPE_ASSOCIATION},
                  {"reference", SCOPE_REFERENCE},   {"property", SCOPE_PROPERTY},
                  {"method", SCOPE_METHOD},         {"parameter", SCOPE_PARAMETER},
                  {"indication", SCOPE_INDICATION}, {"any", SCOPE_ANY}};
    for (const auto& candidate : scopes) {
        if (cursor.accept(candidate.name)) {
            return candidate.scope;
        }
    }
    cursor.expected("a scope");
}

unsigned _takeScopes(MofCursor& cursor) {
    cursor.expect("scope");
    cursor.expect('(');
    unsigned scopes = 0;
    do {
        scopes |= _takeScope(cursor);
    } while (cursor.accept(','));
    cursor.expect(')');
    return scopes;
}

MofFlavor _takeFlavors(MofCursor& cursor) {
    cursor.expect("flavor");
    cursor.expect('(');
    MofFlavor flavor;
    do {
        if (!takeMofFlavor(cursor, flavor)) {
            cursor.expected("a flavor");
        }
    } while (cursor.accept(','));
    cursor.expect(')');
    return flavor;
}

MofQualifierDeclaration _takeQualifierDeclaration(MofCursor& cursor) {
    MofQualifierDeclaration declaration;
    declaration.position = cursor.position();
    declaration.name = cursor.takeName("a qualifier's name");
    cursor.expect(':');
    declaration.type = takeMofType(cursor);
    std::uint32_t size = 0;
    declaration.isArray = takeMofArrayBrackets(cursor, size);
    if (cursor.accept('=')) {
        declaration.defaultValue = takeMofLiteral(cursor);
    }
    cursor.expect(',');
    declaration.scope = _takeScopes(cursor);
    if (cursor.accept(',')) {
        declaration.flavor = _takeFlavors(cursor);
    }
    cursor.expect(';');
    return declaration;
}

void _takePropertyType(MofCursor& cursor, MofProperty& property) {
    const MofPosition place = cursor.position();
    std::string name = cursor.takeName("a property or \"}\"");
    if (cursor.accept("ref")) {
        property.type = Pegasus::CIMTYPE_REFERENCE;
        property.referenceClass = std::move(name);
    } else if (!mofType(name, property.type)) {
        cursor.fail(place, "a type expected, found \"" + name + "\"");
    }
}

MofProperty _takeProperty(MofCursor& cursor) {
    MofProperty property;
    property.qualifiers = takeMofQualifiers(cursor);
    _takePropertyType(cursor, property);
    property.position = cursor.position();
    property.name = cursor.takeName("a property's name");
    if (cursor.at('(')) {
        cursor.fail(cursor.position(), "a property expected, methods are not supported");
    }
    property.isArray = takeMofArrayBrackets(cursor, property.arraySize);
    if (cursor.accept('=')) {
        property.defaultValue = takeMofLiteral(cursor);
    }
    cursor.expect(';');
    return property;
}

MofClass _takeClass(MofCursor& cursor, std::vector<MofQualifier> qualifiers) {
    MofClass declared;
    declared.qualifiers = std::move(qualifiers);
    declared.position = cursor.position();
    declared.name = cursor.takeName("a class's name");
    if (cursor.accept(':')) {
        declared.superclass = cursor.takeName("the superclass's name");
    }
    cursor.expect('{');
    while (!cursor.accept('}')) {
        declared.properties.push_back(_takeProperty(cursor));
    }
    cursor.expect(';');
    return declared;
}

MofInstance _takeInstance(MofCursor& cursor) {
    cursor.expect("of");
    MofInstance instance;
    instance.position = cursor.position();
    instance.className = cursor.takeName("a class's name");
    cursor.expect('{');
    while (!cursor.accept('}')) {
        MofAssignment assignment;
        assignment.position = cursor.position();
        assignment.name = cursor.takeName("a property's name or \"}\"");
        if (instance.find(assignment.name)) {
            cursor.fail(assignment.position, "\"" + assignment.name + "\" is given twice");
        }
        cursor.expect('=');
        assignment.value = takeMofLiteral(cursor);
        cursor.expect(';');
        instance.properties.push_back(std::move(assignment));
    }
    cursor.expect(';');
    return instance;
}

}  // namespace

void takeMofDeclaration(MofCursor& cursor, MofDocument& document) {
    if (cursor.token().kind == MofToken::Pragma) {
        return _skipPragma(cursor);
    }
    if (cursor.accept("qualifier")) {
        document.qualifiers.push_back(_takeQualifierDeclaration(cursor));
        return;
    }
    std::vector<MofQualifier> qualifiers = takeMofQualifiers(cursor);
    if (cursor.accept("class")) {
        document.classes.push_back(_takeClass(cursor, std::move(qualifiers)));
    } else if (qualifiers.empty() && cursor.accept("instance")) {
        document.instances.push_back(_takeInstance(cursor));
    } else {
        cursor.expected("a class, an instance, a qualifier or #pragma");
    }
}

MofDocument parseMof(std::string_view text, const std::string& fileName) {
    MofDocument document;
    document.file = fileName;
    MofCursor cursor(text, fileName);
    while (!cursor.atEnd()) {
        takeMofDeclaration(cursor, document);
    }
    return document;
}

std::string readMofFile(const std::string& path) {
    constexpr std::size_t limit = std::size_t(16) << 20;
    FileContent content = readWholeFile(path, limit);
    switch (content.state) {
        case FileContent::Read:
            return std::move(content.text);
        case FileContent::NotRegular:
            throw Error("Cannot read " + path + ": not a regular file");
        case FileContent::TooLarge:
            throw Error("Cannot read " + path + ": larger than 16 MiB");
        default:
            throwSystemError("Cannot read", path, content.error);
    }
}

MofDocument parseMofFile(const std::string& path) {
    return parseMof(readMofFile(path), path);
}

}  // namespace QZ
