// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// hostile_mix PORT USER:PASSWORD PROCESS SECONDS: steady clients beside all kinds of hostile ones,
// against a server that runs as that process. Ends with 1 where a steady client got a wrong answer,
// or the server takes more and more of the machine. How long its answers take is written, not
// judged.

#include <sys/resource.h>

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

void _sayResult(const char* name, const SteadyClient::Result& result) {
    char text[200];
    (void)std::snprintf(text, sizeof text,
                        "%zu answers, %zu wrong, p50 %.1f ms, p99 %.1f ms, p99.9 %.1f ms",
                        result.milliseconds.size(), result.wrong.size(), result.within(500),
                        result.within(990), result.within(999));
    _say(name, text);
    for (std::size_t i = 0; i < result.wrong.size() && i < 5; ++i) {
        _say("  wrong", result.wrong[i]);
    }
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

    _sayResult("quiet", _askSteadily(target.port, target.userInfo, now() + all / 10));
    _say("the server then", ServerGauge::of(process).text());

    std::atomic<bool> goesOn{true};
    std::vector<std::pair<const char*, std::future<std::uint64_t>>> hostile;
    for (const HostileClient& client : hostileClients()) {
        hostile.emplace_back(client.name,
                             std::async(std::launch::async, [&client, &target, &goesOn] {
                                 return client.run(target, [&goesOn] { return goesOn.load(); });
                             }));
    }
    const Time end = now() + all;
    auto steady = std::async(std::launch::async,
                             [&] { return _askSteadily(target.port, target.userInfo, end); });
    const ServerGauge before = _watch(process, now() + all / 2);
    _say("the server, first half", before.text());
    const ServerGauge after = _watch(process, end);
    _say("second half", after.text());
    const SteadyClient::Result result = steady.get();
    goesOn = false;
    _sayResult("beside the hostile ones", result);
    for (auto& [name, times] : hostile) {
        _say(name, std::to_string(times.get()) + " times");
    }
    const bool isLevel = after.descriptors != 0 && _isLevel(before, after);
    _say("level", isLevel ? "yes" : "no");
    return isLevel && result.wrong.empty() && !result.milliseconds.empty() ? 0 : 1;
}
