// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// server-rounds URL SECONDS: writes and reads a lease and the personalised pairs through a CIM
// server for so long, at full speed, while others do the same to the same file. Prints the rounds;
// says what was not whole, or was refused, and ends with 1 then.

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
constexpr const char* DETAILS = "TAVIRA_ComputerSystemDetails";
constexpr const char* PAIRS[] = {"PersonalizedLabel1", "PersonalizedData1",  "PersonalizedLabel2",
                                 "PersonalizedData2",  "PersonalizedLabel3", "PersonalizedData3",
                                 "PersonalizedLabel4", "PersonalizedData4",  "PersonalizedLabel5",
                                 "PersonalizedData5"};

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

void requireStamped(const CIMInstance& instance, const char* name) {
    const std::string text = QZ::make_string(valueOf<String>(instance, name));
    if (!isStampedText(text.c_str())) {
        throw std::runtime_error(std::string("torn ") + name + " \"" + text + "\"");
    }
}

// The pairs are replaced together.
void passPairs(QZ::Operations& server, const CIMObjectPath& details, unsigned round) {
    CIMInstance modified{CIMName(DETAILS)};
    modified.setPath(details);
    Array<CIMName> names;
    for (const char* const name : PAIRS) {
        char text[STAMPED_SIZE];
        writeStampedText(text, "cim", round * 3571 + names.size());
        modified.addProperty(CIMProperty(CIMName(name), CIMValue(String(text))));
        names.append(CIMName(name));
    }
    server.modifyInstance(modified, CIMPropertyList(names));
    const CIMInstance found = server.getInstance(details);
    for (const char* const name : PAIRS) {
        requireStamped(found, name);
    }
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
    requireStamped(found, "Lessor");
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
        const CIMObjectPath details = server.enumerateInstanceNames(CIMObjectPath(DETAILS)).at(0);
        for (const std::time_t end = std::time(nullptr) + seconds; std::time(nullptr) < end;) {
            const auto start = std::chrono::steady_clock::now();
            passRound(server, round);
            passPairs(server, details, round++);
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
