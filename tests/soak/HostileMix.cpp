// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// hostile_mix PORT USER:PASSWORD PROCESS SECONDS: steady clients beside all kinds of hostile ones,
// against a server that runs as that process. Ends with 1 where a client got a wrong answer, or the
// server takes more and more of the machine; where there is time enough to measure it, also where a
// steady client waits three times as long as in quiet.

#include <sched.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>
#include <utility>

#include "HostileClients.h"
#include "ServerGauge.h"
#include "SteadyClient.h"

namespace {

using Time = std::chrono::steady_clock::time_point;
using std::chrono::seconds;

constexpr int STEADY_CLIENTS = 4;

// After which a server has seen everything, and takes no more.
constexpr seconds SETTLED{300};

// How long it has to be for its slowest hundredth to mean something on a machine that does more.
constexpr seconds MEASURED{600};
constexpr double MOST_SLOWER = 3;

// Memory that an allocator may take at any time, for what it gave back is in the wrong place.
constexpr std::size_t FREE_KILOBYTES = 64'000;

void _say(const char* name, const std::string& text) {
    (void)std::printf("%-24s %s\n", name, text.c_str());
    (void)std::fflush(stdout);
}

SteadyClient::Result _askSteadily(std::uint16_t port, const std::string& userInfo, Time end) {
    std::vector<std::future<SteadyClient::Result>> clients;
    clients.reserve(STEADY_CLIENTS);
    for (int i = 0; i < STEADY_CLIENTS; ++i) {
        clients.push_back(std::async(std::launch::async, [=] {
            return SteadyClient(port, userInfo).run([end] {
                return std::chrono::steady_clock::now() < end;
            });
        }));
    }
    SteadyClient::Result all;
    for (auto& client : clients) {
        all.add(client.get());
    }
    return all;
}

void _sayWrong(const std::vector<std::string>& wrong) {
    for (std::size_t i = 0; i < wrong.size() && i < 5; ++i) {
        _say("  wrong", wrong[i]);
    }
}

void _sayResult(const char* name, const SteadyClient::Result& result) {
    char text[200];
    (void)std::snprintf(text, sizeof text,
                        "%zu answers, %zu wrong, p50 %.1f ms, p99 %.1f ms, p99.9 %.1f ms",
                        result.milliseconds.size(), result.wrong.size(), result.within(500),
                        result.within(990), result.within(999));
    _say(name, text);
    _sayWrong(result.wrong);
}

// The most that the server takes until then.
ServerGauge _watch(pid_t process, Time end) {
    ServerGauge most;
    while (std::chrono::steady_clock::now() < end) {
        most = most.most(ServerGauge::of(process));
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    return most;
}

bool _isLevel(const ServerGauge& before, const ServerGauge& after) {
    return after.kilobytes <= before.kilobytes + before.kilobytes / 4 + FREE_KILOBYTES &&
           after.threads <= before.threads + 4 &&
           after.descriptors <= before.descriptors + before.descriptors / 4 + 16;
}

void _allowDescriptors() {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

// A hostile client is another machine's: the processor that it takes here is not the server's to
// give.
void _giveWay() {
    const sched_param none{};
    (void)sched_setscheduler(0, SCHED_IDLE, &none);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 5) {
        (void)std::fprintf(stderr, "usage: hostile_mix PORT USER:PASSWORD PROCESS SECONDS\n");
        return 2;
    }
    _allowDescriptors();
    const Target target{std::uint16_t(std::strtoul(arguments[1], nullptr, 10)), arguments[2]};
    const auto process = pid_t(std::strtol(arguments[3], nullptr, 10));
    const seconds all(std::strtol(arguments[4], nullptr, 10));
    const auto now = [] { return std::chrono::steady_clock::now(); };

    const SteadyClient::Result quiet = _askSteadily(target.port, target.userInfo, now() + all / 10);
    _sayResult("quiet", quiet);
    _say("the server then", ServerGauge::of(process).text());

    const bool isMeasured = all >= MEASURED;
    std::atomic<bool> goesOn{true};
    std::vector<std::pair<const char*, std::future<HostileResult>>> hostile;
    for (const HostileClient& client : hostileClients()) {
        hostile.emplace_back(client.name, std::async(std::launch::async, [&, client] {
                                 if (isMeasured) {
                                     _giveWay();
                                 }
                                 return client.run({target.port, target.userInfo, client.from},
                                                   [&goesOn] { return goesOn.load(); });
                             }));
    }
    const Time begin = now();
    const Time end = begin + all;
    auto steady = std::async(std::launch::async,
                             [&] { return _askSteadily(target.port, target.userInfo, end); });
    const Time settled = begin + std::min(SETTLED, all / 4);
    _say("the server, at first", _watch(process, settled).text());
    const ServerGauge before = _watch(process, settled + (end - settled) / 2);
    _say("  then", before.text());
    const ServerGauge after = _watch(process, end);
    _say("  in the end", after.text());
    const SteadyClient::Result result = steady.get();
    goesOn = false;
    _sayResult("beside the hostile ones", result);
    bool isRight = quiet.wrong.empty() && result.wrong.empty() && !result.milliseconds.empty();
    for (auto& [name, future] : hostile) {
        const HostileResult done = future.get();
        _say(name, std::to_string(done.times) + " times" + done.text);
        _sayWrong(done.wrong);
        isRight = isRight && done.wrong.empty();
    }
    const bool isLevel = after.descriptors != 0 && _isLevel(before, after);
    _say("level", isLevel ? "yes" : "no");
    const double slower = result.within(990) / quiet.within(990);
    _say("slower, p99", std::to_string(slower) + " times");
    return isRight && isLevel && (!isMeasured || slower <= MOST_SLOWER) ? 0 : 1;
}
