// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PullContexts.h"

#include <Pegasus/Common/Exception.h>
#include <sys/random.h>

#include <utility>

#include "CimText.h"
#include "Clock.h"
#include "MofSyntax.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Nobody can guess another's.
std::string _newName() {
    unsigned char bytes[16];
    if (getrandom(bytes, sizeof bytes, 0) != ssize_t(sizeof bytes)) {
        throw CIMException(CIM_ERR_FAILED, "no random numbers");
    }
    static const char DIGITS[] = "0123456789abcdef";
    std::string name;
    for (const unsigned char byte : bytes) {
        name += DIGITS[byte >> 4U];
        name += DIGITS[byte & 0xFU];
    }
    return name;
}

template <class T>
void _move(std::deque<T>& from, std::deque<T>& to, std::uint32_t count) {
    for (; count != 0 && !from.empty(); --count) {
        to.push_back(std::move(from.front()));
        from.pop_front();
    }
}

PullContexts::Objects _take(PullContexts::Objects& from, std::uint32_t count) {
    PullContexts::Objects taken;
    taken.kind = from.kind;
    taken.includeClassOrigin = from.includeClassOrigin;
    _move(from.instances, taken.instances, count);
    _move(from.paths, taken.paths, count);
    return taken;
}

}  // namespace

std::uint32_t PullContexts::checkedTimeout(std::optional<std::uint32_t> timeout) const {
    if (timeout && (*timeout == 0 || *timeout > _limits.longestTimeout)) {
        throw CIMException(
            CIM_ERR_INVALID_OPERATION_TIMEOUT,
            make_String("from 1 to " + std::to_string(_limits.longestTimeout) + " seconds"));
    }
    return timeout.value_or(_limits.defaultTimeout);
}

void PullContexts::_dropExpired() {
    const std::int64_t now = Clock::current().milliseconds();
    for (auto at = _contexts.begin(); at != _contexts.end();) {
        at = at->second.deadline <= now ? _contexts.erase(at) : std::next(at);
    }
}

PullContexts::Pulled PullContexts::open(const Owner& owner, Objects objects, std::uint32_t maxCount,
                                        std::optional<std::uint32_t> timeout) {
    Context context;
    context.timeout = checkedTimeout(timeout);
    Pulled pulled;
    pulled.objects = _take(objects, maxCount);
    if (objects.size() == 0) {
        return pulled;
    }
    context.owner = owner;
    context.objects = std::move(objects);
    context.deadline = Clock::current().milliseconds() + std::int64_t(context.timeout) * 1000;
    pulled.context = _newName();
    const std::lock_guard<std::mutex> lock(_mutex);
    _dropExpired();
    if (_contexts.size() >= _limits.contexts) {
        throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED,
                           "too many enumerations are open: fetch or close some");
    }
    _contexts.emplace(pulled.context, std::move(context));
    return pulled;
}

std::map<std::string, PullContexts::Context>::iterator PullContexts::_find(
    const Owner& owner, const std::string& context) {
    _dropExpired();
    const auto found = _contexts.find(context);
    if (found == _contexts.end() || found->second.owner.user != owner.user ||
        !sameName(found->second.owner.nameSpace, owner.nameSpace)) {
        throw CIMException(CIM_ERR_INVALID_ENUMERATION_CONTEXT, make_String(context));
    }
    return found;
}

PullContexts::Pulled PullContexts::pull(const Owner& owner, const std::string& context, Kind kind,
                                        std::uint32_t maxCount) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _find(owner, context);
    if (found->second.objects.kind != kind) {
        throw CIMException(CIM_ERR_INVALID_ENUMERATION_CONTEXT, make_String(context));
    }
    Pulled pulled;
    pulled.objects = _take(found->second.objects, maxCount);
    if (found->second.objects.size() == 0) {
        _contexts.erase(found);
    } else {
        pulled.context = context;
        found->second.deadline =
            Clock::current().milliseconds() + std::int64_t(found->second.timeout) * 1000;
    }
    return pulled;
}

void PullContexts::close(const Owner& owner, const std::string& context) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _contexts.erase(_find(owner, context));
}

}  // namespace QZ
