// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

// A variable of the environment, set (or removed, with null) until the end of the scope. TZ takes
// effect at once.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const char* value) : _name(name) {
        if (const char* old = std::getenv(name))
            _old = old;
        set(value);
    }
    ScopedEnvironment(const char* name, const std::string& value)
        : ScopedEnvironment(name, value.c_str()) {}

    ~ScopedEnvironment() { set(_old ? _old->c_str() : nullptr); }

    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void set(const char* value) {
        if (value != nullptr)
            setenv(_name, value, 1);
        else
            unsetenv(_name);
        tzset();
    }

    const char* _name;
    std::optional<std::string> _old;
};
