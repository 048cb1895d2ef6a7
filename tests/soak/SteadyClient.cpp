// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SteadyClient.h"

#include <algorithm>
#include <memory>
#include <thread>

#include "Connection.h"
#include "Requests.h"

namespace {

constexpr std::chrono::milliseconds PAUSE{5};

// Requests over one connection.
constexpr int REQUESTS = 50;

bool _isRight(const std::string& answer) {
    return answer.compare(0, 13, "HTTP/1.1 200 ") == 0 &&
           answer.find("<IRETURNVALUE><VALUE.NAMEDINSTANCE>") != std::string::npos &&
           answer.find("CLASSNAME=\"TAVIRA_Lease\"") != std::string::npos;
}

}  // namespace

double SteadyClient::Result::within(std::size_t perThousand) const {
    if (milliseconds.empty()) {
        return 0;
    }
    std::vector<double> sorted = milliseconds;
    std::sort(sorted.begin(), sorted.end());
    return sorted[std::min(sorted.size() - 1, sorted.size() * perThousand / 1000)];
}

void SteadyClient::Result::add(const Result& other) {
    milliseconds.insert(milliseconds.end(), other.milliseconds.begin(), other.milliseconds.end());
    wrong.insert(wrong.end(), other.wrong.begin(), other.wrong.end());
}

SteadyClient::Result SteadyClient::run(const std::function<bool()>& goesOn) const {
    const std::string bytes = enumeration("TAVIRA_Lease", "", _userInfo);
    Result result;
    std::unique_ptr<Connection> connection;
    for (int i = 0; goesOn(); ++i) {
        const auto begin = std::chrono::steady_clock::now();
        if (i % REQUESTS == 0) {
            connection = std::make_unique<Connection>(_port, "127.0.0.1");
        }
        const std::string answer = connection->send(bytes) ? connection->answer() : "no connection";
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - begin;
        if (_isRight(answer)) {
            result.milliseconds.push_back(time.count());
        } else {
            result.wrong.push_back(answer.empty() ? "no answer" : answer.substr(0, 200));
            i = -1;  // over a new one
        }
        std::this_thread::sleep_for(PAUSE);
    }
    return result;
}
