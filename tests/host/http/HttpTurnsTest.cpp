// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <atomic>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "HttpServer.h"
#include "RawClient.h"

// Who is answered, who waits for it, and who is told that he will not be.

namespace QZ {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

void echo(const HttpRequest& request, HttpReply& reply) {
    reply.write("<" + request.body + ">");
}

std::string post(const std::string& body, const std::string& more = std::string()) {
    return "POST /cimom HTTP/1.1\r\nHost: a\r\n" + more +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

const std::string LAST = "Connection: close\r\n";

HttpServerOptions withLimits(const HttpLimits& limits) {
    HttpServerOptions options;
    options.limits = limits;
    return options;
}

TEST(HttpTurns, TellsAClientThatItStops) {
    std::promise<void> end;
    std::promise<void> begin;
    HttpServer server({}, [&](const HttpRequest&, HttpReply& reply) {
        reply.setLateAnswer([](HttpReply::Late why) {
            return HttpAnswer{500, {}, why == HttpReply::ServerStops ? "stops" : "late"};
        });
        begin.set_value();
        end.get_future().wait();
    });
    const RawClient client(server.port());
    client.send(post(""));
    begin.get_future().wait();
    EXPECT_FALSE(server.stop(milliseconds(0)));
    EXPECT_THAT(client.receive(), EndsWith("\r\n\r\nstops"));
    end.set_value();
    while (server.lostWorkers() != 0) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(server.stop(milliseconds(0)));
}

TEST(HttpTurns, RefusesWhoIsBeingJudgedWhenItStops) {
    std::promise<void> begin;
    TakeVerdict later;
    int logged = 0;
    HttpServerOptions options;
    options.authenticate = [&](const Login&, const TakeVerdict& given) -> std::optional<Verdict> {
        later = given;
        begin.set_value();
        return std::nullopt;
    };
    options.log = [&logged](const HttpLogRecord& record) { logged = record.status; };
    HttpServer server(options, echo);
    auto client = std::make_unique<RawClient>(server.port());
    client->send(post(""));
    begin.get_future().wait();
    std::thread stopping([&server] { EXPECT_TRUE(server.stop(std::chrono::seconds(10))); });
    EXPECT_THAT(client->receive(), StartsWith("HTTP/1.1 503 "));
    client.reset();
    stopping.join();
    EXPECT_EQ(503, logged);
}

// One request at a time, and one that waits.
class BusyServer : public testing::Test {
protected:
    BusyServer() {
        HttpLimits limits;
        limits.workers = 1;
        limits.waiting = 1;
        HttpServerOptions options = withLimits(limits);
        options.log = [this](const HttpLogRecord& record) {
            const std::lock_guard<std::mutex> lock(mutex);
            logged.push_back(record.status);
        };
        server = std::make_unique<HttpServer>(options,
                                              [this](const HttpRequest& request, HttpReply& reply) {
                                                  if (request.body == "slow" && ++begun == 1) {
                                                      begin.set_value();
                                                      ended.wait();
                                                  }
                                                  echo(request, reply);
                                              });
        slow = std::make_unique<RawClient>(server->port());
        slow->send(post("slow", LAST));
        begin.get_future().wait();
        // Whichever of the two comes first waits, the other is told that there is no place.
        for (auto& client : others) {
            client = std::make_unique<RawClient>(server->port());
            client->send(post("quick", LAST));
        }
    }

    // Which of the others waits, by the answer to the one that does not.
    std::size_t waiting() {
        pollfd both[2] = {{others[0]->descriptor(), POLLIN, 0},
                          {others[1]->descriptor(), POLLIN, 0}};
        EXPECT_EQ(1, poll(both, 2, 10'000));
        const std::size_t refused = both[0].revents != 0 ? 0 : 1;
        EXPECT_THAT(others[refused]->receive(),
                    AllOf(StartsWith("HTTP/1.1 503 "), HasSubstr("\r\nRetry-After: 1\r\n")));
        return 1 - refused;
    }

    std::promise<void> begin;
    std::promise<void> end;
    std::shared_future<void> ended = end.get_future().share();
    std::atomic<int> begun{0};
    std::mutex mutex;
    std::vector<int> logged;
    std::unique_ptr<HttpServer> server;
    std::unique_ptr<RawClient> slow;
    std::unique_ptr<RawClient> others[2];
};

TEST_F(BusyServer, LetsOneWaitAndRefusesTheNext) {
    const RawClient& next = *others[waiting()];
    end.set_value();
    EXPECT_THAT(slow->receive(), EndsWith("<slow>"));
    EXPECT_THAT(next.receive(), EndsWith("<quick>"));
}

TEST_F(BusyServer, AnswersWhatWaitsBeforeItStops) {
    const RawClient& next = *others[waiting()];
    std::thread stopping([this] { EXPECT_TRUE(server->stop(std::chrono::seconds(10))); });
    end.set_value();
    EXPECT_THAT(slow->receive(), EndsWith("<slow>"));
    EXPECT_THAT(next.receive(), EndsWith("<quick>"));
    stopping.join();
}

TEST_F(BusyServer, RefusesWhatStillWaitsWhenItsTimeIsOver) {
    const RawClient& next = *others[waiting()];
    EXPECT_FALSE(server->stop(milliseconds(0)));
    EXPECT_THAT(next.receive(),
                AllOf(StartsWith("HTTP/1.1 503 "), HasSubstr("\r\nConnection: close\r\n")));
    {
        // Of the one that found no place, of this one, and of the one in the handler.
        const std::lock_guard<std::mutex> lock(mutex);
        EXPECT_THAT(logged, testing::ElementsAre(503, 503, 503));
    }
    end.set_value();
    while (server->lostWorkers() != 0) {
        std::this_thread::yield();
    }
}

// One thread may be lost and is replaced, each of two more costs a turn.
class HangingServer : public testing::Test {
protected:
    HangingServer() {
        HttpServerOptions options;
        options.limits.workers = 2;
        options.limits.lostWorkers = 1;
        options.limits.answer = milliseconds(100);
        options.lose = [this](const HttpLosses& losses) {
            const std::lock_guard<std::mutex> lock(mutex);
            told.push_back({losses.lost, losses.replaced, losses.turns});
        };
        server = std::make_unique<HttpServer>(options,
                                              [this](const HttpRequest& request, HttpReply& reply) {
                                                  if (request.body == "hang") {
                                                      ended.wait();
                                                  }
                                                  echo(request, reply);
                                              });
    }
    ~HangingServer() override {
        while (server->lostWorkers() != 0) {
            std::this_thread::yield();
        }
    }

    std::string answer(const std::string& body) const {
        const RawClient client(server->port());
        client.send(post(body, LAST));
        return client.receive();
    }
    void hang(int times) const {
        for (int i = 0; i < times; ++i) {
            EXPECT_THAT(answer("hang"), StartsWith("HTTP/1.1 503 "));
        }
    }
    using Losses = std::vector<std::vector<std::size_t>>;
    Losses losses() {
        const std::lock_guard<std::mutex> lock(mutex);
        return told;
    }

    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future().share();
    std::mutex mutex;
    Losses told;
    std::unique_ptr<HttpServer> server;
};

TEST_F(HangingServer, TellsHowManyThreadsAreLost) {
    hang(2);
    EXPECT_THAT(answer("quick"), EndsWith("<quick>"));
    EXPECT_EQ((Losses{{1, 1, 2}, {2, 1, 1}}), losses());
    EXPECT_EQ(2U, server->lostWorkers());
    end.set_value();
}

TEST_F(HangingServer, RefusesAtOnceWhereNoThreadIsLeft) {
    hang(3);
    for (int i = 0; i < 5; ++i) {
        EXPECT_THAT(answer("quick"), AllOf(StartsWith("HTTP/1.1 503 "), HasSubstr("Retry-After")));
    }
    EXPECT_EQ((Losses{{1, 1, 2}, {2, 1, 1}, {3, 1, 0}}), losses());
    end.set_value();
}

TEST_F(HangingServer, GoesOnWithThreadsThatComeBack) {
    hang(3);
    end.set_value();
    while (answer("quick").rfind("HTTP/1.1 200 ", 0) != 0) {
        std::this_thread::yield();
    }
    while (server->lostWorkers() != 0) {
        std::this_thread::yield();
    }
    EXPECT_EQ(2U, losses().back().back()) << "all turns are there again";
    EXPECT_TRUE(server->stop(std::chrono::seconds(10)));
}

TEST(HttpTurns, GivesTheTurnOfALostRequestToTheNext) {
    HttpLimits limits;
    limits.workers = 1;
    limits.answer = milliseconds(200);
    std::promise<void> end;
    std::atomic<int> calls{0};
    HttpServer server(withLimits(limits), [&](const HttpRequest& request, HttpReply& reply) {
        if (++calls == 1) {
            end.get_future().wait();
        }
        echo(request, reply);
    });
    const RawClient slow(server.port());
    slow.send(post("slow"));
    EXPECT_THAT(slow.receive(), StartsWith("HTTP/1.1 503 "));
    for (int i = 0; i < 3; ++i) {
        const RawClient next(server.port());
        next.send(post("next", LAST));
        EXPECT_THAT(next.receive(), EndsWith("<next>"));
    }
    end.set_value();
    while (server.lostWorkers() != 0) {
        std::this_thread::yield();
    }
}

}  // namespace
}  // namespace QZ
