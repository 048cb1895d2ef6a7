// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tavqz/Export.h"
#include "tavqz/InterfaceTable.h"

// The way to the service processors. A service-processor library derives from this class and
// hands its object out through getSharedCommDevice. It keeps the object: the module never deletes
// it, and uses it until it has called interface_Comm_Release. The module asks from the thread
// that makes a provider; request threads share the object without any lock.
class TAVQZ_EXPORT cBusComm {
public:
    cBusComm(const cBusComm&) = delete;
    cBusComm& operator=(const cBusComm&) = delete;

    // How many service processors the bus reaches. 0 or less: none. Must not throw.
    virtual int getServiceProcessorCount() = 0;

    // Loads a library and binds the table's count rows to it, in their order. With relative set
    // the library is the one that openLinuxLib finds, else what the loader finds by that name.
    // 1 when every row that has a name was bound; the object is connected then. Else 0, the
    // library is closed again, the rows before the one that failed stay bound, and the object is
    // not connected. A library that was open before stays loaded and is forgotten.
    int openInterfaceLink(char* fileName, interfaceStruct* table, int count, bool relative);

    // Closes the library if one is open. What was bound to it must not be called any more.
    void closeInterfaceLink();

    bool isConnected() const { return _connected != 0; }

protected:
    cBusComm() = default;
    // Closes nothing: that is for whoever opened the link.
    ~cBusComm() = default;

private:
    void* _handle = nullptr;
    int _connected = 0;
};
