// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PullContexts.h"

#include <Pegasus/Common/Exception.h>

#include <utility>

#include "CimText.h"
#include "Clock.h"
#include "RandomText.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr std::size_t NAME_BYTES = 16;

template <class T>
void _move(std::deque<T>& from, std::deque<T>& to, std::uint32_t count) {
    for (; count != 0 && !from.empty(); --count) {
        to.push_back(std::move(from.front()));
        from.pop_front();
    }
}

[[noreturn]] void _refuse(const std::string& why) {
    throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED, make_String(why));
}

}  // namespace

PullContexts::Kept::Kept(Kept&& other) noexcept
    : _contexts(other._contexts), _objects(std::exchange(other._objects, {})) {}

PullContexts::Kept::~Kept() {
    _contexts->_kept -= size();
}

void PullContexts::Kept::setForm(Kind kind, bool includeClassOrigin) {
    _objects.kind = kind;
    _objects.includeClassOrigin = includeClassOrigin;
}

// Room for one more.
void PullContexts::Kept::_count() {
    const Limits& limits = _contexts->_limits;
    if (size() >= limits.objects) {
        _refuse("there are more than " + std::to_string(limits.objects) +
                ": enumerate them at once");
    }
    if (_contexts->_kept++ >= limits.allObjects) {
        --_contexts->_kept;
        _refuse("too much is waiting to be fetched: fetch or close some, or enumerate at once");
    }
}

void PullContexts::Kept::add(const CIMInstance& instance) {
    _count();
    _objects.instances.push_back(instance);
}

void PullContexts::Kept::add(const CIMObjectPath& path) {
    _count();
    _objects.paths.push_back(path);
}

PullContexts::Objects PullContexts::Kept::take(std::uint32_t count) {
    Objects taken;
    taken.kind = _objects.kind;
    taken.includeClassOrigin = _objects.includeClassOrigin;
    _move(_objects.instances, taken.instances, count);
    _move(_objects.paths, taken.paths, count);
    _contexts->_kept -= taken.size();
    return taken;
}

std::uint32_t PullContexts::checkedTimeout(std::optional<std::uint32_t> timeout) const {
    if (timeout && (*timeout == 0 || *timeout > _limits.longestTimeout)) {
        throw CIMException(
            CIM_ERR_INVALID_OPERATION_TIMEOUT,
            make_String("from 1 to " + std::to_string(_limits.longestTimeout) + " seconds"));
    }
    return timeout.value_or(_limits.defaultTimeout);
}

// Asked for before each request, most often with nothing to do.
void PullContexts::dropExpired() {
    if (_kept != 0) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _dropExpired();
    }
}

void PullContexts::_dropExpired() {
    const std::int64_t now = Clock::current().milliseconds();
    for (auto at = _contexts.begin(); at != _contexts.end();) {
        at = at->second.deadline <= now ? _contexts.erase(at) : std::next(at);
    }
}

PullContexts::Pulled PullContexts::open(const Owner& owner, Kept objects, std::uint32_t maxCount,
                                        std::optional<std::uint32_t> timeout) {
    const std::uint32_t seconds = checkedTimeout(timeout);
    Pulled pulled;
    pulled.objects = objects.take(maxCount);
    if (objects.size() == 0) {
        return pulled;
    }
    Context context{owner, std::move(objects), seconds,
                    Clock::current().milliseconds() + std::int64_t(seconds) * 1000};
    pulled.context = randomText(NAME_BYTES);
    const std::lock_guard<std::mutex> lock(_mutex);
    _dropExpired();
    if (_contexts.size() >= _limits.contexts) {
        _refuse("too many enumerations are open: fetch or close some");
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
    if (found->second.objects.kind() != kind) {
        throw CIMException(CIM_ERR_INVALID_ENUMERATION_CONTEXT, make_String(context));
    }
    Pulled pulled;
    pulled.objects = found->second.objects.take(maxCount);
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
