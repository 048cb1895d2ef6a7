// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "BasicCredentials.h"
#include "Error.h"
#include "ManualClock.h"
#include "RawClient.h"

namespace QZ {
namespace {

using std::chrono::milliseconds;
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

TEST(HttpServer, AnswersSeveralRequestsOverOneConnection) {
    HttpServer server({}, echo);
    const RawClient client(server.port());
    client.send(post("one"));
    EXPECT_THAT(client.receive("<one>"), StartsWith("HTTP/1.1 200 OK\r\n"));
    client.send(post("two", LAST));
    EXPECT_THAT(client.receive(), EndsWith("\r\n\r\n<two>"));
}

TEST(HttpServer, AnswersInOrderWhatCameAtOnce) {
    HttpServer server({}, echo);
    const RawClient client(server.port());
    client.send(post("one") + post("two") + post("three", LAST));
    const std::string answers = client.receive();
    EXPECT_LT(answers.find("<one>"), answers.find("<two>"));
    EXPECT_LT(answers.find("<two>"), answers.find("<three>"));
    EXPECT_THAT(answers, EndsWith("<three>"));
}

TEST(HttpServer, JoinsTheChunksOfABody) {
    HttpServer server({}, echo);
    const RawClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n" + LAST +
                "\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n");
    EXPECT_THAT(client.receive(), EndsWith("<abcde>"));
}

TEST(HttpServer, SendsALongAnswerInChunks) {
    HttpServer server(
        {}, [](const HttpRequest&, HttpReply& reply) { reply.write(std::string(200'000, 'x')); });
    const RawClient client(server.port());
    client.send(post("", LAST));
    const std::string answer = client.receive();
    EXPECT_THAT(answer, HasSubstr("Transfer-Encoding: chunked\r\n"));
    EXPECT_THAT(answer, EndsWith("\r\n0\r\n\r\n"));
}

TEST(HttpServer, KeepsWhatAHeaderSaysOnItsLine) {
    HttpServer server({}, [](const HttpRequest&, HttpReply& reply) {
        reply.addHeader("X-Name", std::string("a\r\nX-Other: b\0c\n", 16));
        reply.addHeader("X-Empty", "");
    });
    const RawClient client(server.port());
    client.send(post("", LAST));
    EXPECT_THAT(client.receive(), HasSubstr("\r\nX-Name: a  X-Other: b c \r\nX-Empty: \r\n"));
}

TEST(HttpServer, DatesItsAnswers) {
    ManualClock clock(1800000000);
    HttpServer server({}, echo);
    const RawClient client(server.port());
    for (const char* date : {"Fri, 15 Jan 2027 08:00:00 GMT", "Fri, 15 Jan 2027 08:00:01 GMT"}) {
        for (int i = 0; i < 20; ++i) {  // on any of the server's threads
            client.send(post("one"));
            EXPECT_THAT(client.receive("<one>"),
                        HasSubstr("\r\nDate: " + std::string(date) + "\r\n"));
        }
        clock.sleepMilliseconds(1000);
    }
}

TEST(HttpServer, GoesOnWhereAClientExpectsToBeTold) {
    HttpServer server({}, echo);
    const RawClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1\r\nExpect: 100-continue\r\n" +
                LAST + "\r\n");
    EXPECT_EQ("HTTP/1.1 100 Continue\r\n\r\n", client.receive("\r\n\r\n"));
    client.send("a");
    EXPECT_THAT(client.receive(), EndsWith("<a>"));
}

TEST(HttpServer, NamesTheMethodsItAllows) {
    HttpServer server({}, echo);
    const RawClient client(server.port());
    client.send("GET / HTTP/1.1\r\nHost: a\r\n\r\n");
    const std::string answer = client.receive();
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 405 "));
    EXPECT_THAT(answer, HasSubstr("Allow: POST, M-POST\r\n"));
}

TEST(HttpServer, RefusesALongBodyAndIsHeard) {
    HttpLimits limits;
    limits.bodyBytes = 10;
    HttpServer server(withLimits(limits), echo);
    const RawClient client(server.port());
    client.send(post("0123456789a"));
    EXPECT_THAT(client.receive("\r\n\r\n"), StartsWith("HTTP/1.1 413 "));
}

TEST(HttpServer, RefusesWhatIsNoHttp) {
    HttpServer server({}, echo);
    const RawClient client(server.port());
    client.send("what is this\r\n\r\n");
    EXPECT_THAT(client.receive("\r\n\r\n"), StartsWith("HTTP/1.1 400 "));
}

TEST(HttpServer, DoesNotWaitForeverForARequest) {
    HttpLimits limits;
    limits.header = limits.body = milliseconds(20);
    HttpServer server(withLimits(limits), echo);
    const RawClient header(server.port());
    const RawClient body(server.port());
    header.send("POST / HT");
    body.send("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 5\r\n\r\nab");
    EXPECT_THAT(header.receive("\r\n\r\n"), StartsWith("HTTP/1.1 408 "));
    EXPECT_THAT(body.receive("\r\n\r\n"), StartsWith("HTTP/1.1 408 "));
}

void writeCaller(const HttpRequest& request, HttpReply& reply) {
    reply.write("<" + request.caller.name + ">");
}

TEST(HttpServer, AsksWhoItIs) {
    HttpServerOptions options;
    options.authenticate = [](const Login& login, const TakeVerdict&) -> std::optional<Verdict> {
        const bool isAnn = login.user == "ann" && equalSecrets(login.password, "secret");
        return isAnn ? Verdict{Verdict::Accepted, {"ann", {}}, {}} : Verdict{};
    };
    HttpServer server(options, writeCaller);
    const auto ask = [&server](const std::string& header) {
        const RawClient client(server.port());
        client.send(post("", header + LAST));
        return client.receive();
    };
    const auto as = [](const char* password) {
        return "Authorization: " + basicAuthorization({"ann", password}) + "\r\n";
    };
    EXPECT_THAT(ask(""), HasSubstr("WWW-Authenticate: Basic realm=\"tavqz\""));
    EXPECT_THAT(ask(as("wrong")), StartsWith("HTTP/1.1 401 "));
    EXPECT_THAT(ask(as("secret")), EndsWith("<ann>"));
}

// Keeps what is asked, and whom to tell.
struct Gatekeeper {
    explicit Gatekeeper(HttpServerOptions& options) {
        options.authenticate = [this](const Login& login,
                                      const TakeVerdict& later) -> std::optional<Verdict> {
            if (login.hasPassword) {
                return Verdict{Verdict::Accepted, {login.user, {}}, {}};
            }
            asked.set_value(later);
            return std::nullopt;
        };
    }

    std::promise<TakeVerdict> asked;
};

TEST(HttpServer, HoldsUpNobodyWhileItIsFoundOutWhoAsks) {
    HttpServerOptions options;
    options.limits.workers = 1;
    Gatekeeper gatekeeper(options);
    HttpServer server(options, writeCaller);
    const RawClient slow(server.port());
    slow.send(post("", LAST));
    const TakeVerdict tell = gatekeeper.asked.get_future().get();
    const RawClient quick(server.port());
    quick.send(post("", "Authorization: " + basicAuthorization({"ann", "x"}) + "\r\n" + LAST));
    EXPECT_THAT(quick.receive(), EndsWith("<ann>"));
    tell({Verdict::Accepted, {"bob", {}}, {}});
    EXPECT_THAT(slow.receive(), EndsWith("<bob>"));
}

TEST(HttpServer, TellsAClientWhenToTryAgain) {
    const auto answer = [](const Verdict& verdict) {
        HttpServerOptions options;
        Gatekeeper gatekeeper(options);
        HttpServer server(options, writeCaller);
        const RawClient client(server.port());
        client.send(post("", LAST));
        gatekeeper.asked.get_future().get()(verdict);
        return client.receive();
    };
    const std::string busy = answer({Verdict::Busy, {}, std::chrono::seconds(2)});
    EXPECT_THAT(busy, StartsWith("HTTP/1.1 503 "));
    EXPECT_THAT(busy, HasSubstr("Retry-After: 2\r\n"));
    const std::string tooOften = answer({Verdict::TooOften, {}, std::chrono::seconds(8)});
    EXPECT_THAT(tooOften, StartsWith("HTTP/1.1 429 Too Many Requests\r\n"));
    EXPECT_THAT(tooOften, HasSubstr("Retry-After: 8\r\n"));
}

TEST(HttpServer, WaitsForNobodyWhoDoesNotFindOutWhoAsks) {
    HttpServerOptions options;
    options.limits.answer = milliseconds(50);
    Gatekeeper gatekeeper(options);
    HttpServer server(options, writeCaller);
    const RawClient client(server.port());
    client.send(post(""));
    EXPECT_THAT(client.receive(), StartsWith("HTTP/1.1 503 "));
    // Too late for that client, and harmless.
    gatekeeper.asked.get_future().get()({Verdict::Accepted, {"ann", {}}, {}});
}

TEST(HttpServer, SurvivesWhateverIsThrown) {
    HttpServer server({}, [](const HttpRequest&, HttpReply&) { throw 1; });
    const RawClient client(server.port());
    client.send(post("", LAST));
    EXPECT_THAT(client.receive(), StartsWith("HTTP/1.1 500 "));
}

TEST(HttpServer, ResetsAnAnswerThatItCannotEnd) {
    HttpServer server({}, [](const HttpRequest&, HttpReply& reply) {
        reply.write(std::string(70'000, 'x'));
        throw 1;
    });
    const RawClient client(server.port());
    client.send("POST / HTTP/1.0\r\nContent-Length: 0\r\n\r\n");
    EXPECT_TRUE(client.isReset());
}

TEST(HttpServer, TellsAClientThatItTakesTooLong) {
    HttpLimits limits;
    limits.answer = milliseconds(20);
    std::promise<void> end;
    HttpServer server(withLimits(limits),
                      [&end](const HttpRequest&, HttpReply&) { end.get_future().wait(); });
    const RawClient client(server.port());
    client.send(post(""));
    EXPECT_THAT(client.receive("\r\n\r\n"), StartsWith("HTTP/1.1 503 "));
    EXPECT_EQ(1U, server.lostWorkers());
    EXPECT_FALSE(server.stop(milliseconds(0)));
    end.set_value();
    while (server.lostWorkers() != 0) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(server.stop(milliseconds(0)));
}

TEST(HttpServer, LetsHandlersThatWaitForEachOtherMeet) {
    HttpLimits limits;
    limits.workers = 4;
    std::mutex mutex;
    std::condition_variable came;
    std::size_t inside = 0;
    HttpServer server(withLimits(limits), [&](const HttpRequest& request, HttpReply& reply) {
        if (request.body == "wait") {
            std::unique_lock<std::mutex> lock(mutex);
            ++inside;
            came.notify_all();
            came.wait(lock, [&] { return inside % limits.workers == 0; });
        }
        echo(request, reply);
    });
    std::vector<std::unique_ptr<RawClient>> clients(limits.workers);
    for (auto& client : clients) {
        client = std::make_unique<RawClient>(server.port());
    }
    // Again and again: the threads take their places anew each time.
    for (int round = 0; round < 20; ++round) {
        for (const auto& client : clients) {
            client->send(post("wait") + post("go on"));
        }
        for (const auto& client : clients) {
            EXPECT_THAT(client->receive("<go on>"), HasSubstr("<wait>"));
        }
    }
    EXPECT_EQ(0U, server.lostWorkers());
}

TEST(HttpServer, StopsAtOnceWhereNobodyAsks) {
    HttpServer server({}, echo);
    const RawClient idle(server.port());
    EXPECT_TRUE(server.stop(std::chrono::seconds(10)));
    EXPECT_TRUE(server.stop(milliseconds(0)));
}

TEST(HttpServer, ServesOthersWhileAClientReadsNothing) {
    std::atomic<std::size_t> written{0};
    HttpLimits limits;
    limits.sending = milliseconds(200);
    std::promise<void> gaveUp;
    HttpServer server(withLimits(limits), [&](const HttpRequest& request, HttpReply& reply) {
        if (request.body == "quick") {
            return reply.write("<quick>");
        }
        try {
            for (;;) {
                reply.write(std::string(10'000, 'x'));
                written += 10'000;
            }
        } catch (const Disconnected&) {
            gaveUp.set_value();
            throw;
        }
    });
    const RawClient slow(server.port());
    slow.send(post("endless"));
    const RawClient quick(server.port());
    quick.send(post("quick", LAST));
    EXPECT_THAT(quick.receive(), EndsWith("<quick>"));
    EXPECT_EQ(std::future_status::ready, gaveUp.get_future().wait_for(std::chrono::seconds(10)));
    EXPECT_LT(written, std::size_t(64) * 1024 * 1024);
    EXPECT_TRUE(server.stop(std::chrono::seconds(10)));  // the handler is still on its way out
}

// How a process of its own fares that may have no thread more, then one, and so on: it is to be
// told why there is no server, until there is one that answers.
enum WithFewThreads { Answered, NotAnswered, NotTold, NotLimited };

const std::string NO_THREADS =
    "Cannot start the server's threads: Resource temporarily unavailable; allow it more processes "
    "and more memory";

[[noreturn]] void serveByFewThreads() {
    rlimit threads{};
    // Nothing keeps root from making them.
    if ((geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) ||
        getrlimit(RLIMIT_NPROC, &threads) != 0) {
        _exit(NotLimited);
    }
    for (rlim_t count = 1;; ++count) {
        threads.rlim_cur = count;
        if (setrlimit(RLIMIT_NPROC, &threads) != 0) {
            _exit(NotLimited);
        }
        try {
            const HttpServer server({}, echo);
            const RawClient client(server.port());
            client.send(post("quick", LAST));
            const bool answers = testing::Value(client.receive(), EndsWith("<quick>"));
            _exit(count == 1 ? NotLimited : answers ? Answered : NotAnswered);
        } catch (const Error& error) {
            if (error.what() != NO_THREADS) {
                _exit(NotTold);
            }
        }
    }
}

TEST(HttpServer, ServesByAsFewThreadsAsThereAreOrSaysSo) {
    const pid_t child = fork();
    if (child == 0) {
        serveByFewThreads();
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == NotLimited) {
        GTEST_SKIP() << "nothing limits the threads of a process here";
    }
    EXPECT_EQ(WEXITSTATUS(status), Answered);
}

}  // namespace
}  // namespace QZ
