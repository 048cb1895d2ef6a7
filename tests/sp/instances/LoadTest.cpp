// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "ServiceProcessorMachine.h"

namespace {

constexpr int _clients = 16;
constexpr int _rounds = 100;
constexpr auto _longest = std::chrono::seconds(3);

// Two processors, of which the second fails what the first answers; a query takes its time.
constexpr const char* _description =
    "count = 2\ntype = 8\nvpd.1.1.EEPROM_FRU_NUMBER = A\nvpd.3.1.EEPROM_FRU_NUMBER = B\n"
    "vpd.18.1.FIRMWARE_IMAGE_VERSION = 1.0\nmachine.type = 8840\nwatchdog.os = 60\n"
    "delay.watchdog = 1\nsp1.fail.vpd = 5\nsp1.fail.state = 5\n";

}  // namespace

TEST(ServiceProcessorLoad, AnswersSixteenClientsAtOnceAsItAnswersOne) {
    const ServiceProcessorMachine machine(_description);
    std::vector<std::size_t> expected;
    for (const char* name : serviceProcessorClasses) {
        expected.push_back(machine.enumerate(name).size());
    }
    ASSERT_EQ(expected, (std::vector<std::size_t>{2, 2, 1, 2, 2, 2, 1}));
    std::atomic<int> wrong{0};
    std::atomic<int> answers{0};
    const auto end = std::chrono::steady_clock::now() + _longest;
    std::vector<std::thread> clients;
    clients.reserve(_clients);
    for (int client = 0; client < _clients; ++client) {
        clients.emplace_back([&, client] {
            for (int round = 0; round < _rounds && std::chrono::steady_clock::now() < end;
                 ++round) {
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    const std::size_t at = (i + static_cast<std::size_t>(client)) % expected.size();
                    wrong += machine.enumerate(serviceProcessorClasses[at]).size() != expected[at];
                    ++answers;
                }
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_GE(answers, _clients * static_cast<int>(expected.size())) << "less than a round each";
}
