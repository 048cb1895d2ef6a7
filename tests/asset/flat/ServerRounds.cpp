// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// server-rounds URL SECONDS: writes and reads a lease through a CIM server for so long, at full
// speed, while others do the same to the same file. Prints the rounds; says what was not whole, or
// was refused, and ends with 1 then.

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <stdexcept>
#include <string>

#include "CimText.h"
#include "RemoteServer.h"
#include "StampedText.h"

using namespace Pegasus;

namespace {

constexpr const char* LEASE = "TAVIRA_Lease.Identifier=\"TAVIRA|CorvanaAgent|Lease\"";

template <class Value>
Value valueOf(const CIMInstance& instance, const char* name) {
    const Uint32 at = instance.findProperty(CIMName(name));
    if (at == PEG_NOT_FOUND) {
        throw std::runtime_error(std::string("without ") + name);
    }
    Value value;
    instance.getProperty(at).getValue().get(value);
    return value;
}

void passRound(QZ::Operations& server, unsigned round) {
    char text[STAMPED_SIZE];
    writeStampedText(text, "cim", round * 6151);
    CIMInstance modified(CIMName("TAVIRA_Lease"));
    modified.setPath(CIMObjectPath(LEASE));
    modified.addProperty(CIMProperty(CIMName("Lessor"), CIMValue(String(text))));
    modified.addProperty(CIMProperty(CIMName("Buyout"), CIMValue(Uint32(stampedNumber(round)))));
    Array<CIMName> names;
    names.append(CIMName("Lessor"));
    names.append(CIMName("Buyout"));
    server.modifyInstance(modified, CIMPropertyList(names));

    const CIMInstance found = server.getInstance(CIMObjectPath(LEASE));
    const std::string lessor = QZ::make_string(valueOf<String>(found, "Lessor"));
    if (!isStampedText(lessor.c_str())) {
        throw std::runtime_error("torn lessor \"" + lessor + "\"");
    }
    const Uint32 buyout = valueOf<Uint32>(found, "Buyout");
    if (!isStampedNumber(buyout)) {
        throw std::runtime_error("torn buyout " + std::to_string(buyout));
    }
}

}  // namespace

int main(int count, char** arguments) {
    unsigned round = 0;
    std::chrono::steady_clock::duration longest{};
    try {
        const long seconds = count == 3 ? std::strtol(arguments[2], nullptr, 10) : 0;
        QZ::RemoteServer server(QZ::parseServerUrl(count == 3 ? arguments[1] : ""));
        for (const std::time_t end = std::time(nullptr) + seconds; std::time(nullptr) < end;) {
            const auto start = std::chrono::steady_clock::now();
            passRound(server, round++);
            longest = std::max(longest, std::chrono::steady_clock::now() - start);
        }
    } catch (const Exception& refused) {
        (void)std::fprintf(stderr, "%s\n", QZ::make_string(refused.getMessage()).c_str());
        return 1;
    } catch (const std::exception& failure) {
        (void)std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    (void)std::printf("%u rounds through the server, the longest in %.0f ms\n", round,
                      std::chrono::duration<double, std::milli>(longest).count());
    return round > 0 ? 0 : 1;
}
