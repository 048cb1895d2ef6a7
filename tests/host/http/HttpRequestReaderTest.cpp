// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpRequestReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using namespace QZ;

namespace {

const std::string POST = "POST /cimom HTTP/1.1\r\nHost: a\r\n";
const std::string CHUNKED = POST + "Transfer-Encoding: chunked\r\n\r\n";

class Reading {
public:
    // Hands over bytes in pieces, until something is decided.
    HttpRequestReader::State feed(const std::string& bytes, std::size_t piece = 1'000'000) {
        HttpRequestReader::State state = HttpRequestReader::Empty;
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            const std::size_t size = std::min(piece, bytes.size() - at);
            std::memcpy(reader.prepare(size), bytes.data() + at, size);
            reader.commit(size);
            state = advance();
            if (state == HttpRequestReader::Refused) {
                break;
            }
        }
        return state;
    }

    // Past the header, which everybody may send here.
    HttpRequestReader::State advance() {
        const HttpRequestReader::State state = reader.read();
        return state == HttpRequestReader::AtBody ? reader.read() : state;
    }

    HttpLimits limits;
    HttpRequestReader reader{limits};
};

// The status that a request is refused with; 0: it is taken.
int _refusal(const std::string& bytes) {
    Reading reading;
    return reading.feed(bytes) == HttpRequestReader::Refused ? reading.reader.refusal() : 0;
}

std::string _body(const std::string& bytes, std::size_t piece) {
    Reading reading;
    return reading.feed(bytes, piece) == HttpRequestReader::Complete ? reading.reader.request().body
                                                                     : "none";
}

int _refusalWith(const std::string& fields) {
    return _refusal(POST + fields + "Content-Length: 0\r\n\r\n");
}

}  // namespace

TEST(HttpRequestReader, TakesARequestHoweverItComes) {
    for (const std::size_t piece : {1U, 2U, 7U, 1000U}) {
        EXPECT_EQ(_body(POST + "Content-Length: 3\r\n\r\nabc", piece), "abc") << piece;
        EXPECT_EQ(_body(CHUNKED + "2\r\nab\r\n1;x=y\r\nc\r\n0\r\nLast: 1\r\n\r\n", piece), "abc")
            << piece;
    }
}

TEST(HttpRequestReader, StopsOnceAtTheBody) {
    Reading reading;
    const std::string bytes = POST + "Content-Length: 1\r\n\r\nx";
    std::memcpy(reading.reader.prepare(bytes.size()), bytes.data(), bytes.size());
    reading.reader.commit(bytes.size());
    EXPECT_EQ(reading.reader.read(), HttpRequestReader::AtBody);
    EXPECT_EQ(reading.reader.request().body, "");
    ASSERT_NE(reading.reader.request().header("host"), nullptr);
    EXPECT_EQ(reading.reader.read(), HttpRequestReader::Complete);
    EXPECT_EQ(reading.reader.request().body, "x");
}

TEST(HttpRequestReader, KeepsWhatCameBehind) {
    Reading reading;
    reading.feed(POST + "Content-Length: 1\r\n\r\nx" + POST + "Content-Length: 1\r\n\r\ny");
    EXPECT_EQ(reading.reader.request().body, "x");
    reading.reader.next();
    EXPECT_TRUE(reading.reader.holdsBytes());
    EXPECT_EQ(reading.advance(), HttpRequestReader::Complete);
    EXPECT_EQ(reading.reader.request().body, "y");
    EXPECT_FALSE(reading.reader.holdsBytes());
}

TEST(HttpRequestReader, LetsEmptyLinesPassBeforeARequest) {
    for (const std::size_t piece : {1U, 3U, 1000U}) {
        EXPECT_EQ(_body("\r\n\r\n" + POST + "Content-Length: 1\r\n\r\nx", piece), "x") << piece;
    }
    Reading reading;
    EXPECT_EQ(reading.feed("\r\n\r"), HttpRequestReader::Empty);
    EXPECT_EQ(reading.feed("\r"), HttpRequestReader::Refused) << "half of a line is none";
}

// A body whose end two readers may see in different places hides a request from one of them.
TEST(HttpRequestReader, TakesNoBodyOfUncertainLength) {
    for (const char* coding : {"gzip", "identity", "xchunked", "chunked, gzip", "gzip, chunked"}) {
        EXPECT_NE(_refusal(POST + "Transfer-Encoding: " + coding + "\r\n\r\n0\r\n\r\n"), 0)
            << coding;
    }
    EXPECT_EQ(_refusal(POST + "Transfer-Encoding: gzip\r\n\r\n"), 501);
    EXPECT_NE(_refusal(POST + "Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked\r\n\r\n"),
              0);
    EXPECT_EQ(_refusal(POST + "Content-Length: 5\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"),
              400);
    EXPECT_EQ(_refusal(POST + "Content-Length: 5\r\nContent-Length: 6\r\n\r\n"), 400);
    EXPECT_EQ(_refusal(POST + "Content-Length: -1\r\n\r\n"), 400);
    EXPECT_EQ(_refusal("POST / HTTP/1.0\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"), 400);
    EXPECT_EQ(_refusal(POST + "Transfer-Encoding: CHUNKED\r\n\r\n0\r\n\r\n"), 0);
}

TEST(HttpRequestReader, KeepsOnlySoMuchThatItCannotDecode) {
    const std::string much(100'000, 'a');
    EXPECT_EQ(_refusal(CHUNKED + "1;" + much), 400);
    EXPECT_EQ(_refusal(CHUNKED + std::string(100'000, '0')), 400);
    EXPECT_EQ(_refusal(CHUNKED + "0\r\nX: " + much), 400);
    EXPECT_EQ(_refusal(POST + "X: " + much), 431);
    EXPECT_EQ(_refusal("POST /" + much), 431);
}

TEST(HttpRequestReader, TakesNoFieldFromBehindTheBody) {
    Reading reading;
    EXPECT_EQ(reading.feed(CHUNKED + "0\r\nAuthorization: Basic YTpi\r\n\r\n"),
              HttpRequestReader::Complete);
    EXPECT_EQ(reading.reader.request().header("Authorization"), nullptr);
}

TEST(HttpRequestReader, TakesABodyUpToItsLimit) {
    for (const std::string& bytes :
         {POST + "Content-Length: 11\r\n\r\n", CHUNKED + "b\r\n" + std::string(11, 'x')}) {
        Reading reading;
        reading.limits.bodyBytes = 10;
        reading.reader.next();
        EXPECT_EQ(reading.feed(bytes), HttpRequestReader::Refused);
        EXPECT_EQ(reading.reader.refusal(), 413);
    }
}

TEST(HttpRequestReader, WantsOneHost) {
    const std::string end = "Content-Length: 0\r\n\r\n";
    EXPECT_EQ(_refusal("POST / HTTP/1.1\r\n" + end), 400);
    EXPECT_EQ(_refusal("POST / HTTP/1.1\r\nHost: a\r\nHost: a\r\n" + end), 400);
    EXPECT_EQ(_refusal("POST / HTTP/1.1\r\nHost: a b\r\n" + end), 400);
    EXPECT_EQ(_refusal("POST / HTTP/1.1\r\nHost: a/b\r\n" + end), 400);
    EXPECT_EQ(_refusal("POST / HTTP/1.1\r\nHost: [::1]:5988\r\n" + end), 0);
    EXPECT_EQ(_refusal("POST / HTTP/1.1\r\nHost:\r\n" + end), 0);
    EXPECT_EQ(_refusal("POST / HTTP/1.0\r\n" + end), 0);
}

TEST(HttpRequestReader, RefusesWhatItDoesNotUnderstand) {
    EXPECT_EQ(_refusal("GET / HTTP/1.1\r\nHost: a\r\n\r\n"), 405);
    EXPECT_EQ(_refusal("POST / HTTP/2.0\r\nHost: a\r\n\r\n"), 505);
    EXPECT_EQ(_refusal("POST / HTTP/1.2\r\nHost: a\r\n\r\n"), 505);
    EXPECT_EQ(_refusal("nonsense\r\n\r\n"), 400);
    EXPECT_EQ(_refusalWith("Content-Encoding: gzip\r\n"), 415);
    EXPECT_EQ(_refusalWith("Content-Encoding: Identity\r\n"), 0);
    EXPECT_EQ(_refusalWith("Expect: a-miracle\r\n"), 417);
}

TEST(HttpRequestReader, KnowsWhoWaitsForAWord) {
    Reading reading;
    EXPECT_EQ(reading.feed(POST + "Expect: 100-Continue\r\nContent-Length: 1\r\n\r\n"),
              HttpRequestReader::Body);
    EXPECT_TRUE(reading.reader.expectsContinue());
    Reading old;
    EXPECT_EQ(old.feed("POST / HTTP/1.0\r\nExpect: 100-continue\r\nContent-Length: 1\r\n\r\n"),
              HttpRequestReader::Body);
    EXPECT_FALSE(old.reader.expectsContinue());
}

TEST(HttpRequestReader, KnowsWhetherTheConnectionGoesOn) {
    const auto keepsAlive = [](const std::string& head) {
        Reading reading;
        reading.feed(head + "Content-Length: 0\r\n\r\n");
        return reading.reader.keepsAlive();
    };
    EXPECT_TRUE(keepsAlive(POST));
    EXPECT_FALSE(keepsAlive(POST + "Connection: close\r\n"));
    EXPECT_FALSE(keepsAlive("POST / HTTP/1.0\r\n"));
    EXPECT_TRUE(keepsAlive("POST / HTTP/1.0\r\nConnection: keep-alive\r\n"));
}
