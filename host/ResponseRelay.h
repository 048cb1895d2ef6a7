// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <exception>
#include <functional>
#include <thread>
#include <utility>

namespace QZ {

// Holds a provider to the order of its answer: processing(), what it delivers, complete(), each of
// the two once. The first breach is kept and told by check(), so that nothing is thrown through a
// provider's code. One thread at a time.
class ResponseOrder {
public:
    void onProcessing();
    void onDeliver();
    void onComplete();
    void onInvalid(const char* what) { _breach(what); }

    // Throws CIMException, CIM_ERR_FAILED, for a breach; also for an answer that is not complete,
    // and where mayBeSilent is false for none at all.
    void check(bool mayBeSilent) const;

private:
    void _breach(const char* what);

    bool _processing = false;
    bool _complete = false;
    const char* _what = nullptr;
};

// What came of handing on, told apart from what a provider throws.
struct RelayFailure {
    std::exception_ptr cause;
};

// Hands on what an operation delivers, as it comes. What `take` throws ends that, and is thrown by
// run(), in a RelayFailure. A provider that goes on delivering then, perhaps without end, is thrown
// a CIMException, as OpenPegasus' handlers do where something is wrong; on a thread of the
// provider's own, which may take no exception, what it delivers is only dropped.
template <class Handler, class T>
class ResponseRelay : public Handler {
public:
    using Take = std::function<void(const T& one)>;

    explicit ResponseRelay(Take take) : _handOn(std::move(take)) {}

    void processing() override { _order.onProcessing(); }
    void complete() override { _order.onComplete(); }
    void deliver(const T& one) override {
        _onDeliver();
        _take(one);
    }
    void deliver(const Pegasus::Array<T>& several) override {
        _onDeliver();
        for (Pegasus::Uint32 i = 0; i < several.size(); ++i) {
            _take(several[i]);
        }
    }

    // Calls `provide`, which makes the provider deliver here. Throws RelayFailure, else what comes
    // out of it, else as ResponseOrder::check().
    template <class Provide>
    void run(Provide provide) {
        try {
            provide();
        } catch (...) {
            if (!_failure) {
                throw;
            }
        }
        if (_failure) {
            throw RelayFailure{_failure};
        }
        _order.check(false);
    }

private:
    // What is wrong with one that is delivered; null for nothing.
    static const char* _flaw(const T& one);

    void _onDeliver() {
        if (_failure && std::this_thread::get_id() == _asked) {
            throw Pegasus::CIMException(Pegasus::CIM_ERR_FAILED,
                                        "nobody takes what the provider delivers any more");
        }
        _order.onDeliver();
    }

    void _take(const T& one) {
        if (_failure) {
            return;
        }
        if (const char* const flaw = _flaw(one)) {
            _order.onInvalid(flaw);
            return;
        }
        try {
            _handOn(one);
        } catch (...) {
            _failure = std::current_exception();
        }
    }

    const std::thread::id _asked = std::this_thread::get_id();
    ResponseOrder _order;
    Take _handOn;
    std::exception_ptr _failure;
};

using InstanceRelay = ResponseRelay<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using PathRelay = ResponseRelay<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;

template <>
const char* InstanceRelay::_flaw(const Pegasus::CIMInstance& one);
template <>
const char* PathRelay::_flaw(const Pegasus::CIMObjectPath& one);

// The handler of an operation that delivers nothing. A provider may leave it alone altogether.
class Acknowledgement : public Pegasus::ResponseHandler {
public:
    void processing() override { _order.onProcessing(); }
    void complete() override { _order.onComplete(); }

    void check() const { _order.check(true); }

private:
    ResponseOrder _order;
};

}  // namespace QZ
