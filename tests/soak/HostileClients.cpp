// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HostileClients.h"

#include <chrono>
#include <memory>
#include <random>
#include <thread>

#include "Connection.h"

namespace {

using GoesOn = std::function<bool()>;
using std::chrono::milliseconds;

constexpr const char* FROM = "127.0.0.2";

// Between two attacks of a kind, so that there is processor left for who shall be measured.
constexpr milliseconds PAUSE{20};

std::string _repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

// Sends that over a connection of its own, and takes whatever comes back, again and again.
std::uint64_t _repeat(const Target& target, const GoesOn& goesOn,
                      const std::function<std::string()>& bytes) {
    std::uint64_t times = 0;
    for (; goesOn(); ++times) {
        const Connection connection(target.port, FROM);
        if (connection.isOpen() && connection.send(bytes())) {
            (void)connection.answer();
        }
        std::this_thread::sleep_for(PAUSE);
    }
    return times;
}

// Connections that are all there at once; each is asked for its next bytes every second.
std::uint64_t _hold(const Target& target, const GoesOn& goesOn, std::size_t count,
                    const std::function<std::string(std::size_t second)>& bytes) {
    std::vector<std::unique_ptr<Connection>> all(count);
    std::uint64_t times = 0;
    for (std::size_t second = 0; goesOn(); ++second) {
        for (auto& connection : all) {
            if (!connection || !connection->isOpen() || !connection->sendAtOnce(bytes(second))) {
                connection = std::make_unique<Connection>(target.port, FROM);
                ++times;
            }
        }
        for (int i = 0; i < 10 && goesOn(); ++i) {
            std::this_thread::sleep_for(milliseconds(100));
        }
    }
    return times;
}

std::uint64_t _aByteASecond(const Target& target, const GoesOn& goesOn) {
    static const std::string HEADER = "POST /cimom HTTP/1.1\r\nX: ";
    return _hold(target, goesOn, 200, [](std::size_t second) {
        return std::string(1, second < HEADER.size() ? HEADER[second] : 'x');
    });
}

std::uint64_t _idle(const Target& target, const GoesOn& goesOn) {
    return _hold(target, goesOn, 500, [](std::size_t) { return std::string(); });
}

std::uint64_t _garbage(const Target& target, const GoesOn& goesOn) {
    std::minstd_rand random(1);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    return _repeat(target, goesOn, [&random] {
        std::string bytes(1 + random() % 5000, '\0');
        for (char& byte : bytes) {
            byte = char(random() % 256);
        }
        return bytes + "\r\n\r\n";
    });
}

std::uint64_t _wrongPasswords(const Target& target, const GoesOn& goesOn) {
    std::uint64_t number = 0;
    return _repeat(target, goesOn, [&number] {
        return enumeration("TAVIRA_Lease", "", "guest:guess" + std::to_string(++number));
    });
}

std::uint64_t _bigBodies(const Target& target, const GoesOn& goesOn) {
    std::string bytes =
        request("EnumerateInstances", std::string(std::size_t(10) << 20, 'x'), target.userInfo);
    return _repeat(target, goesOn, [&bytes] { return bytes; });
}

std::uint64_t _badXml(const Target& target, const GoesOn& goesOn) {
    const std::string list = "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY>" +
                             _repeated("<VALUE>Caption</VALUE>", 10'000) +
                             "</VALUE.ARRAY></IPARAMVALUE>";
    const std::vector<std::string> all{
        request("EnumerateInstances", _repeated("<a>", 100'000), target.userInfo),
        request("EnumerateInstances",
                "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;\">]>"
                "<CIM>&b;&b;&b;&b;</CIM>",
                target.userInfo),
        request("EnumerateInstances", "<CIM/><CIM/>", target.userInfo),
        request("EnumerateInstances", "<CIM>\xff\xfe</CIM>", target.userInfo),
        request("NoSuchMethod", "<CIM", target.userInfo),
        enumeration("NO_SuchClass", "", target.userInfo),
        enumeration("TAVIRA_Lease", list, target.userInfo),
        enumeration("TAVIRA_Lease",
                    "<IPARAMVALUE NAME=\"LocalOnly\"><VALUE>x</VALUE></IPARAMVALUE>",
                    target.userInfo),
    };
    std::size_t next = 0;
    return _repeat(target, goesOn, [&] { return all[next++ % all.size()]; });
}

std::uint64_t _cutConnections(const Target& target, const GoesOn& goesOn) {
    const std::string bytes = enumeration("TAVIRA_SerialNumberInformation", "", target.userInfo);
    std::minstd_rand random(2);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    std::uint64_t times = 0;
    for (; goesOn(); ++times) {
        Connection connection(target.port, FROM);
        // In the middle of the request, or of the answer.
        (void)connection.send(times % 2 == 0 ? bytes.substr(0, random() % bytes.size()) : bytes);
        connection.reset();
        std::this_thread::sleep_for(PAUSE);
    }
    return times;
}

}  // namespace

const std::vector<HostileClient>& hostileClients() {
    static const std::vector<HostileClient> ALL{
        {"a byte a second", _aByteASecond},
        {"idle", _idle},
        {"garbage", _garbage},
        {"wrong passwords", _wrongPasswords},
        {"bodies of 10 MB", _bigBodies},
        {"bad XML", _badXml},
        {"cut connections", _cutConnections},
    };
    return ALL;
}
