// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace QZ {

// The enumerations that clients fetch piece by piece (DSP0200, 5.4.2.24). Each belongs to the user
// who opened it, to its namespace and to its kind, and ends when all is fetched, when it is closed,
// or when nobody asked for a while. Any thread may call.
class PullContexts {
public:
    struct Limits {
        std::size_t contexts = 64;
        std::size_t objects = 100'000;        // in one
        std::size_t allObjects = 200'000;     // in all, and those that are being gathered
        std::uint32_t defaultTimeout = 30;    // seconds
        std::uint32_t longestTimeout = 3600;  // seconds
    };

    enum Kind { Instances, Paths };

    // What was found, and how it is to be written.
    struct Objects {
        Kind kind = Instances;
        bool includeClassOrigin = false;
        std::deque<Pegasus::CIMInstance> instances;  // with their paths
        std::deque<Pegasus::CIMObjectPath> paths;

        std::size_t size() const { return instances.size() + paths.size(); }
    };

    // Objects that count among all that there may be, until they are handed to a client or given
    // up. Used by one thread at a time, and not longer than its PullContexts.
    class Kept {
    public:
        explicit Kept(PullContexts& contexts) : _contexts(&contexts) {}
        Kept(Kept&& other) noexcept;
        Kept& operator=(Kept&& other) = delete;
        ~Kept();

        // Throws CIMException, CIM_ERR_SERVER_LIMITS_EXCEEDED.
        void add(const Pegasus::CIMInstance& instance);
        void add(const Pegasus::CIMObjectPath& path);

        Objects take(std::uint32_t count);
        std::size_t size() const { return _objects.size(); }

        void setForm(Kind kind, bool includeClassOrigin);
        Kind kind() const { return _objects.kind; }

    private:
        void _count();

        PullContexts* _contexts;
        Objects _objects;
    };

    struct Owner {
        std::string user;
        std::string nameSpace;  // ignoring case
    };

    // A piece of an enumeration, and how to go on.
    struct Pulled {
        Objects objects;
        std::string context;  // empty at the end
    };

    explicit PullContexts(Limits limits) : _limits(limits) {}

    // The first piece, of at most so many objects; the rest is kept. Each throws CIMException:
    // CIM_ERR_INVALID_OPERATION_TIMEOUT for none or too long a time (seconds),
    // CIM_ERR_SERVER_LIMITS_EXCEEDED, and CIM_ERR_INVALID_ENUMERATION_CONTEXT for a context that is
    // not, or no more, or another's.
    Pulled open(const Owner& owner, Kept objects, std::uint32_t maxCount,
                std::optional<std::uint32_t> timeout);
    Pulled pull(const Owner& owner, const std::string& context, Kind kind, std::uint32_t maxCount);
    void close(const Owner& owner, const std::string& context);

    // How many there are, of all users.
    std::size_t keptObjects() const { return _kept; }

    // Ends those that nobody asked for any more.
    void dropExpired();

    // The time that was asked for, if it may be.
    std::uint32_t checkedTimeout(std::optional<std::uint32_t> timeout) const;

private:
    struct Context {
        Owner owner;
        Kept objects;
        std::uint32_t timeout = 0;
        std::int64_t deadline = 0;  // milliseconds of the clock
    };

    void _dropExpired();
    std::map<std::string, Context>::iterator _find(const Owner& owner, const std::string& context);

    const Limits _limits;
    std::atomic<std::size_t> _kept{0};  // objects; before the contexts that count them
    std::mutex _mutex;
    std::map<std::string, Context> _contexts;
};

}  // namespace QZ
