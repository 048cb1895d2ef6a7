// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ResponseRelay.h"

#include <Pegasus/Common/Exception.h>

namespace QZ {

void ResponseOrder::_breach(const char* what) {
    if (!_what) {
        _what = what;
    }
}

void ResponseOrder::onProcessing() {
    if (_processing) {
        _breach("the provider called processing() twice");
    }
    _processing = true;
}

void ResponseOrder::onDeliver() {
    if (!_processing) {
        _breach("the provider delivered before processing()");
    }
    if (_complete) {
        _breach("the provider delivered after complete()");
    }
}

void ResponseOrder::onComplete() {
    if (!_processing) {
        _breach("the provider called complete() before processing()");
    }
    if (_complete) {
        _breach("the provider called complete() twice");
    }
    _complete = true;
}

void ResponseOrder::check(bool mayBeSilent) const {
    const char* what = _what;
    if (!what && !_complete && (_processing || !mayBeSilent)) {
        what = "the provider returned without complete()";
    }
    if (what) {
        throw Pegasus::CIMException(Pegasus::CIM_ERR_FAILED, what);
    }
}

template <>
const char* InstanceRelay::_flaw(const Pegasus::CIMInstance& one) {
    return one.isUninitialized() ? "the provider delivered an instance that holds nothing"
                                 : nullptr;
}

template <>
const char* PathRelay::_flaw(const Pegasus::CIMObjectPath& one) {
    return one.getClassName().isNull() ? "the provider delivered a path without a class" : nullptr;
}

}  // namespace QZ
