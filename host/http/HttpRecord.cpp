// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpRecord.h"

namespace QZ {

using std::chrono::steady_clock;

HttpRecord::Time HttpRecord::begin(const std::string& peer, const HttpRequest& request) {
    _known = {};
    _known.peer = peer;
    _known.method = request.method;
    _known.target = request.target;
    _begin = steady_clock::now();
    return _begin;
}

void HttpRecord::report(const HttpServerOptions& options, const Caller& caller, int status) const {
    HttpLogRecord record = _known;
    record.status = status;
    _report(options, caller, std::move(record));
}

void HttpRecord::report(const HttpServerOptions& options, const Caller& caller,
                        const ResponseStream& answer) const {
    const ResponseStream::Summary summary = answer.summary();
    HttpLogRecord record = _known;
    record.status = summary.status;
    record.bytes = summary.bytes;
    record.text = summary.text;
    _report(options, caller, std::move(record));
}

void HttpRecord::_report(const HttpServerOptions& options, const Caller& caller,
                         HttpLogRecord record) const {
    if (!options.log) {
        return;
    }
    record.user = caller.name;
    record.time =
        std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - _begin);
    options.log(record);
}

}  // namespace QZ
