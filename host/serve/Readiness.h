// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Tells the service manager that started this process how it is, where one wants to know: by
// datagrams to the socket that NOTIFY_SOCKET names (sd_notify(3)). Made while there is one thread;
// the variable is nobody else's then. Telling never fails: it is for whoever listens.
class Readiness {
public:
    Readiness();

    void ready() const;
    // What is told next is ready().
    void reloading() const;
    void stopping() const;

private:
    void _tell(const std::string& state) const;

    std::string _socket;  // empty: nobody wants to know
};

}  // namespace QZ
