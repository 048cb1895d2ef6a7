// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMValue.h>

#include <utility>

#include "CIMValueRep.h"

namespace Pegasus {

namespace {

using RepHandle = std::shared_ptr<const CIMValueRep>;

template <class T>
constexpr CIMType _typeOf = CIMTYPE_BOOLEAN;
#define TAVQZ_X(TYPE, PASSED, CODE) \
    template <>                     \
    constexpr CIMType _typeOf<TYPE> = CODE;
TAVQZ_CIM_TYPES(TAVQZ_X)
#undef TAVQZ_X

// Handles share what they stand for; a value must not change with the handle it was made from.
template <class T>
const T& _detached(const T& x) {
    return x;
}

CIMObject _detached(const CIMObject& x) {
    return x.clone();
}

CIMInstance _detached(const CIMInstance& x) {
    return x.clone();
}

template <class T>
Array<T> _detachedEach(const Array<T>& x) {
    Array<T> result;
    result.reserveCapacity(x.size());
    for (Uint32 i = 0; i < x.size(); ++i)
        result.append(x[i].clone());
    return result;
}

Array<CIMObject> _detached(const Array<CIMObject>& x) {
    return _detachedEach(x);
}

Array<CIMInstance> _detached(const Array<CIMInstance>& x) {
    return _detachedEach(x);
}

template <class T>
RepHandle _makeRep(const T& x) {
    return std::make_shared<CIMValueRep>(CIMValueRep{_typeOf<T>, false, 0, _detached(x)});
}

template <class T>
RepHandle _makeRep(const Array<T>& x) {
    return std::make_shared<CIMValueRep>(CIMValueRep{_typeOf<T>, true, x.size(), _detached(x)});
}

RepHandle _makeNull(CIMType type, bool isArray, Uint32 arraySize) {
    return std::make_shared<CIMValueRep>(
        CIMValueRep{type, isArray, isArray ? arraySize : 0, std::monostate()});
}

const CIMValueRep& _of(const RepHandle& rep) {
    static const CIMValueRep nothing;
    return rep ? *rep : nothing;
}

template <class T>
void _read(const CIMValueRep& rep, CIMType type, bool isArray, T& x) {
    if (rep.type != type || rep.isArray != isArray)
        throw TypeMismatchException();
    if (!rep.isNull())
        x = _detached(std::get<T>(rep.data));
}

template <class T>
bool _same(const T& x, const T& y) {
    return x == y;
}

bool _same(const CIMObject& x, const CIMObject& y) {
    return x.identical(y);
}

bool _same(const CIMInstance& x, const CIMInstance& y) {
    return x.identical(y);
}

template <class T>
bool _same(const Array<T>& x, const Array<T>& y) {
    if (x.size() != y.size())
        return false;
    for (Uint32 i = 0; i < x.size(); ++i) {
        if (!_same(x[i], y[i]))
            return false;
    }
    return true;
}

}  // namespace

CIMValue::CIMValue() = default;
CIMValue::CIMValue(const CIMValue& x) = default;
CIMValue::~CIMValue() = default;
CIMValue& CIMValue::operator=(const CIMValue& x) = default;

CIMValue::CIMValue(CIMType type, Boolean isArray, Uint32 arraySize)
    : _rep(_makeNull(type, isArray, arraySize)) {}

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are types.
#define TAVQZ_X(TYPE, PASSED, CODE)                                 \
    CIMValue::CIMValue(PASSED x) : _rep(_makeRep(x)) {}             \
    CIMValue::CIMValue(const Array<TYPE>& x) : _rep(_makeRep(x)) {} \
    void CIMValue::set(PASSED x) {                                  \
        _rep = _makeRep(x);                                         \
    }                                                               \
    void CIMValue::set(const Array<TYPE>& x) {                      \
        _rep = _makeRep(x);                                         \
    }                                                               \
    void CIMValue::get(TYPE& x) const {                             \
        _read(_of(_rep), CODE, false, x);                           \
    }                                                               \
    void CIMValue::get(Array<TYPE>& x) const {                      \
        _read(_of(_rep), CODE, true, x);                            \
    }
TAVQZ_CIM_TYPES(TAVQZ_X)
#undef TAVQZ_X
// NOLINTEND(bugprone-macro-parentheses)

void CIMValue::assign(const CIMValue& x) {
    *this = x;
}

void CIMValue::clear() {
    _rep.reset();
}

void CIMValue::setNullValue(CIMType type, Boolean isArray, Uint32 arraySize) {
    _rep = _makeNull(type, isArray, arraySize);
}

CIMType CIMValue::getType() const {
    return _of(_rep).type;
}

Boolean CIMValue::isArray() const {
    return _of(_rep).isArray;
}

Boolean CIMValue::isNull() const {
    return _of(_rep).isNull();
}

Uint32 CIMValue::getArraySize() const {
    return _of(_rep).arraySize;
}

Boolean CIMValue::typeCompatible(const CIMValue& x) const {
    return getType() == x.getType() && isArray() == x.isArray();
}

Boolean CIMValue::equal(const CIMValue& x) const {
    if (!typeCompatible(x) || isNull() != x.isNull())
        return false;
    return std::visit(
        [&](const auto& mine) {
            return _same(mine, std::get<std::decay_t<decltype(mine)>>(_of(x._rep).data));
        },
        _of(_rep).data);
}

Boolean operator==(const CIMValue& x, const CIMValue& y) {
    return x.equal(y);
}

Boolean operator!=(const CIMValue& x, const CIMValue& y) {
    return !x.equal(y);
}

template class Array<CIMValue>;

}  // namespace Pegasus
