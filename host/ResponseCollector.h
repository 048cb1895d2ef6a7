// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <utility>
#include <vector>

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

// Collects what an operation delivers.
template <class Handler, class T>
class ResponseCollector : public Handler {
public:
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

    // What was delivered, in order; empties the collector. Throws as ResponseOrder::check().
    std::vector<T> take() {
        _order.check(false);
        return std::move(_collected);
    }

private:
    void _take(const T& one);

    ResponseOrder _order;
    std::vector<T> _collected;
};

using InstanceCollector = ResponseCollector<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using PathCollector = ResponseCollector<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;

template <>
void InstanceCollector::_take(const Pegasus::CIMInstance& one);
template <>
void PathCollector::_take(const Pegasus::CIMObjectPath& one);

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
