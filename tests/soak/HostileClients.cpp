// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HostileClients.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <random>
#include <thread>

#include "BadInput.h"
#include "Connection.h"
#include "Requests.h"

namespace {

using GoesOn = std::function<bool()>;
using std::chrono::milliseconds;

// Between two attacks of a kind, so that there is processor left for who shall be measured.
constexpr milliseconds PAUSE{20};

// Wrong answers that are kept.
constexpr std::size_t MOST_WRONG = 5;

bool _begins(const std::string& text, const std::string& with) {
    return text.compare(0, with.size(), with) == 0;
}

// Busy with others of this address: closed without a word, or told to come back.
bool _isTurnedAway(const std::string& answer) {
    return answer.empty() || _begins(answer, "HTTP/1.1 503 ");
}

void _keep(HostileResult& result, const std::string& name, const std::string& answer) {
    if (result.wrong.size() < MOST_WRONG) {
        result.wrong.push_back(name + ": " + answer.substr(0, 300));
    }
}

std::string _answerTo(const Target& target, const std::string& bytes) {
    const Connection connection(target.port, target.from);
    // The answer may come before the request is taken whole.
    if (connection.isOpen()) {
        (void)connection.send(bytes);
        return connection.answer();
    }
    return {};
}

// Of those that were closed, so that they are idle and no flood.
constexpr std::size_t MADE_A_SECOND = 200;

// Connections that are all there at once; each is asked for its next bytes every second, and made
// again some time after it is over.
HostileResult _hold(const Target& target, const GoesOn& goesOn, std::size_t count,
                    const std::function<std::string(std::size_t second)>& bytes) {
    std::vector<std::unique_ptr<Connection>> all(count);
    HostileResult result;
    std::size_t most = 0;
    for (std::size_t second = 0; goesOn(); ++second) {
        std::size_t made = 0;
        std::size_t held = 0;
        for (auto& connection : all) {
            const bool isHeld = connection && connection->isOpen() && !connection->isOver() &&
                                connection->sendAtOnce(bytes(second));
            held += isHeld ? 1 : 0;
            if (!isHeld && (second == 0 || ++made <= MADE_A_SECOND) && goesOn()) {
                connection = std::make_unique<Connection>(target.port, target.from);
                ++result.times;
            }
        }
        most = std::max(most, held);
        for (int i = 0; i < 10 && goesOn(); ++i) {
            std::this_thread::sleep_for(milliseconds(100));
        }
    }
    result.text = ", " + std::to_string(most) + " at once";
    return result;
}

HostileResult _aByteASecond(const Target& target, const GoesOn& goesOn) {
    static const std::string HEADER = "POST /cimom HTTP/1.1\r\nX: ";
    return _hold(target, goesOn, 200, [](std::size_t second) {
        return std::string(1, second < HEADER.size() ? HEADER[second] : 'x');
    });
}

HostileResult _idle(const Target& target, const GoesOn& goesOn) {
    return _hold(target, goesOn, 10'000, [](std::size_t) { return std::string(); });
}

HostileResult _garbage(const Target& target, const GoesOn& goesOn) {
    std::minstd_rand random(1);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    HostileResult result;
    for (; goesOn(); ++result.times) {
        std::string bytes(1 + random() % 5000, '\0');
        for (char& byte : bytes) {
            byte = char(random() % 256);
        }
        const std::string answer = _answerTo(target, bytes + "\r\n\r\n");
        if (!_isTurnedAway(answer) && !_begins(answer, "HTTP/1.1 4")) {
            _keep(result, "garbage", answer);
        }
        std::this_thread::sleep_for(PAUSE);
    }
    return result;
}

HostileResult _wrongPasswords(const Target& target, const GoesOn& goesOn) {
    HostileResult result;
    for (; goesOn(); ++result.times) {
        std::string guess = "guest" + std::to_string(result.times);
        guess += ":guess";
        const std::string answer = _answerTo(target, enumeration("TAVIRA_Lease", "", guess));
        if (!_isTurnedAway(answer) && !_begins(answer, "HTTP/1.1 401 ") &&
            !_begins(answer, "HTTP/1.1 429 ")) {
            _keep(result, "guess", answer);
        }
        std::this_thread::sleep_for(PAUSE);
    }
    return result;
}

HostileResult _badInput(const Target& target, const GoesOn& goesOn) {
    const std::vector<BadInput> all = badInput(target.userInfo);
    std::map<std::string, std::size_t> right;
    HostileResult result;
    for (; goesOn(); ++result.times) {
        const BadInput& input = all[std::size_t(result.times % all.size())];
        const std::string answer = _answerTo(target, input.bytes);
        if (_begins(answer, input.status) && answer.find(input.text) != std::string::npos) {
            ++right[input.name];
        } else if (!_isTurnedAway(answer)) {
            _keep(result, input.name, answer);
        }
        std::this_thread::sleep_for(PAUSE);
    }
    for (const BadInput& input : all) {
        if (right[input.name] == 0) {
            _keep(result, input.name, "never answered");
        }
    }
    return result;
}

HostileResult _cutConnections(const Target& target, const GoesOn& goesOn) {
    const std::string bytes = enumeration("TAVIRA_SerialNumberInformation", "", target.userInfo);
    std::minstd_rand random(2);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    HostileResult result;
    for (; goesOn(); ++result.times) {
        Connection connection(target.port, target.from);
        // In the middle of the request, or of the answer.
        (void)connection.send(result.times % 2 == 0 ? bytes.substr(0, random() % bytes.size())
                                                    : bytes);
        connection.reset();
        std::this_thread::sleep_for(PAUSE);
    }
    return result;
}

}  // namespace

const std::vector<HostileClient>& hostileClients() {
    static const std::vector<HostileClient> ALL{
        {"a byte a second", "127.0.0.2", _aByteASecond},
        {"idle", "127.0.0.2", _idle},
        {"garbage", "127.0.0.3", _garbage},
        {"wrong passwords", "127.0.0.4", _wrongPasswords},
        {"bad input", "127.0.0.5", _badInput},
        {"cut connections", "127.0.0.6", _cutConnections},
    };
    return ALL;
}
