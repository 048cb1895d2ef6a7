// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "HttpLoop.h"
#include "HttpRecord.h"
#include "HttpShared.h"
#include "HttpWire.h"
#include "ResponseStream.h"

namespace QZ {

// A request of a connection that is being answered, by the one thread that made this; another may
// expire it meanwhile. It has a turn of HttpShared, and ends that; or loses it with its thread.
class HttpAnswering : public HttpCall {
public:
    // What of the connection it uses. The owner keeps all of it, as it is.
    struct Place {
        std::shared_ptr<void> owner;
        HttpShared& shared;
        HttpWire& wire;
        const HttpRecord& record;
        const Caller& caller;
    };

    HttpAnswering(Place place, const ResponseStream::Form& form);

    // Has the handler answer.
    void work(const HttpRequest& request);

    // What is left to be sent, and told to the log; none where it expired.
    std::optional<ResponseStream::End> finish();

    void expire(HttpReply::Late why, bool isReplaced) override;

private:
    void _endTurn();

    const Place _place;
    ResponseStream _stream;
    std::mutex _ending;  // while it is held, the connection stays as it is
    enum { Taken, Lost, Ended } _turn = Taken;
};

}  // namespace QZ
