// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpAnswering.h"

#include <utility>

namespace QZ {

using std::chrono::milliseconds;

HttpAnswering::HttpAnswering(Place place, const ResponseStream::Form& form)
    : _place(std::move(place)), _stream(form, [this](const std::string& bytes) {
          return _place.wire.sendAll(bytes, _place.shared.options.limits.sending);
      }) {}

void HttpAnswering::work(const HttpRequest& request) {
    try {
        _place.shared.handler(request, _stream);
    } catch (const Disconnected&) {
        // Nobody is there to be told.
    } catch (...) {
        _stream.discard({});
        _stream.setStatus(500);
    }
}

std::optional<ResponseStream::End> HttpAnswering::finish() {
    const std::lock_guard<std::mutex> lock(_ending);
    _endTurn();
    std::optional<ResponseStream::End> end = _stream.finish();
    if (end) {
        _place.record.report(_place.shared.options, _place.caller, _stream);
    }
    return end;
}

// Beside the thread that is in the handler, which does not come past finish() meanwhile.
void HttpAnswering::expire(HttpReply::Late why, bool isReplaced) {
    const std::lock_guard<std::mutex> lock(_ending);
    if (why == HttpReply::TookTooLong && _turn == Taken) {
        isReplaced ? _endTurn() : _place.shared.loseTurn();
        _turn = isReplaced ? Ended : Lost;
        _place.shared.tellLosses();
    }
    const std::optional<ResponseStream::End> end = _stream.expire(why);
    if (!end) {
        return;
    }
    if (end->next == ResponseStream::Abort) {
        _place.wire.cut();
    } else {
        _place.wire.sendAll(end->bytes, milliseconds(0));
        _place.wire.end();
    }
    _place.record.report(_place.shared.options, _place.caller, _stream);
}

void HttpAnswering::_endTurn() {
    const auto turn = std::exchange(_turn, Ended);
    if (turn == Taken) {
        _place.shared.endTurn();
    } else if (turn == Lost) {
        _place.shared.regainTurn();
        _place.shared.tellLosses();
    }
}

}  // namespace QZ
