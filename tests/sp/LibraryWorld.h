// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tavqz/AccessHelpers.h"
#include "tavqz/InterfaceTable.h"

// What the test program shows to the libraries under test, and learns from them: the log texts
// of the access layer, the calls that reach a library, and what those answer.
struct LibraryWorld {
    // "tag|text" for each addLogItem.
    std::vector<std::string> log;
    // The entry points called, in order.
    std::vector<std::string> calls;
    // The bus of the last call that passed one.
    const void* bus = nullptr;
    // What an entry point returns, if not 0.
    std::map<std::string, int> statuses;

    static LibraryWorld& current();
};

// Called by the libraries.
extern "C" TAVQZ_EXPORT int entryPointCalled(const char* name);
extern "C" TAVQZ_EXPORT int entryPointCalledWithBus(const char* name, const void* bus);

// Lets the test run in the sibling of a folder of libraries, <build>/tests/sp/VARIANT/run, with
// a fresh world and unbound tables. What the access layer prints is caught.
class InVariant {
public:
    explicit InVariant(const std::string& variant);
    ~InVariant();
    InVariant(const InVariant&) = delete;
    InVariant& operator=(const InVariant&) = delete;

    // What was printed since the last call.
    std::string printed();

private:
    std::string _home;
};

// Counts the handles on the library of that file name, closing them all: a test that leaves one
// open by design ends so.
int closeEveryHandle(const std::string& name);

bool isLoaded(const std::string& name);

// A writable copy, for the operations that take char*.
class Name {
public:
    explicit Name(const std::string& text) : _text(text) {}
    operator char*() { return _text.data(); }

private:
    std::string _text;
};

template <std::size_t Count>
std::vector<bool> boundRows(const interfaceStruct (&table)[Count]) {
    std::vector<bool> bound;
    for (const interfaceStruct& row : table) {
        bound.push_back(row.funcPtr != nullptr);
    }
    return bound;
}

// The text logged for a row that was bound.
std::string boundText(const std::string& operation, const std::string& library,
                      const interfaceStruct& row);
