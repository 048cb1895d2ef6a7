// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ListenerUrl.h"

#include <gmock/gmock.h>

#include "Error.h"

using namespace QZ;

namespace {

std::string _read(const std::string& text) {
    const ListenerUrl url = parseListenerUrl(text);
    return std::string(url.isSecure ? "s " : "") + url.host + " " + std::to_string(url.port) + " " +
           url.target;
}

}  // namespace

TEST(ListenerUrl, HasHostPortAndPath) {
    EXPECT_EQ(_read("http://127.0.0.1:4711/a?b=c"), "127.0.0.1 4711 /a?b=c");
    EXPECT_EQ(_read("HTTP://listener.example.com"), "listener.example.com 5988 /");
    EXPECT_EQ(_read("https://listener/"), "s listener 5989 /");
    EXPECT_EQ(_read("http://[::1]:65535/"), "::1 65535 /");
    EXPECT_EQ(_read("http://[fe80::1]/x"), "fe80::1 5988 /x");
}

TEST(ListenerUrl, IsNothingElse) {
    for (const char* const text : {"",
                                   "listener",
                                   "ftp://listener",
                                   "http://",
                                   "http:///x",
                                   "http://:80/",
                                   "http://a:/",
                                   "http://a:0/",
                                   "http://a:65536/",
                                   "http://a:80x/",
                                   "http://user@a/",
                                   "http://user:p@a/",
                                   "http://[::1",
                                   "http://[::1]x/",
                                   "http://[]/",
                                   "http://a b/",
                                   "http://a/b c",
                                   "http://a/\r\nX: y",
                                   "http://a/#b",
                                   "http://a\n/"}) {
        EXPECT_THROW(_read(text), Error) << text;
    }
}
