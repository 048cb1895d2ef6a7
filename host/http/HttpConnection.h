// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/strand.hpp>
#include <memory>

#include "HttpShared.h"

namespace QZ {

// One thread at a time is at a connection.
using HttpStrand = boost::asio::strand<boost::asio::io_context::executor_type>;
using HttpSocket = boost::asio::basic_stream_socket<boost::asio::ip::tcp, HttpStrand>;

// A client's connection: reads a request, has it answered, sends the answer, and again. It is used
// on its socket's strand, but where a function says otherwise.
class HttpConnection {
public:
    virtual ~HttpConnection() = default;

    // The socket's executor belongs to the loop.
    static std::shared_ptr<HttpConnection> make(std::shared_ptr<HttpShared> shared,
                                                std::shared_ptr<HttpLoop> loop, HttpSocket socket);

    virtual void awaitRequest() = 0;
    // Answers with that status alone, and closes.
    virtual void refuse(int status) = 0;
    // Lets an answer that is under way leave, and then goes. Any thread.
    virtual void stop() = 0;
};

}  // namespace QZ
