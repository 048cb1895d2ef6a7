// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <exception>
#include <functional>
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
// check(), in a RelayFailure: nothing passes through the provider's code.
template <class Handler, class T>
class ResponseRelay : public Handler {
public:
    using Take = std::function<void(const T& one)>;

    explicit ResponseRelay(Take take) : _handOn(std::move(take)) {}

    void processing() override { _order.onProcessing(); }
    void complete() override { _order.onComplete(); }
    void deliver(const T& one) override {
        _order.onDeliver();
        _take(one);
    }
    void deliver(const Pegasus::Array<T>& several) override {
        _order.onDeliver();
        for (Pegasus::Uint32 i = 0; i < several.size(); ++i) {
            _take(several[i]);
        }
    }

    // Throws RelayFailure, else as ResponseOrder::check().
    void check() const {
        if (_failure) {
            throw RelayFailure{_failure};
        }
        _order.check(false);
    }

private:
    // What is wrong with one that is delivered; null for nothing.
    static const char* _flaw(const T& one);

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
