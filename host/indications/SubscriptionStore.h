// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "SubscriptionFile.h"
#include "SubscriptionRules.h"

namespace QZ {

// A subscription with what it refers to.
struct SubscriptionTerms {
    Pegasus::CIMInstance subscription;  // with its path
    FilterTerms wanted;
    std::string destination;  // the same for each subscription that goes there
    std::string url;
    bool isEnabled = false;
};

// The filters, destinations and subscriptions of all namespaces, kept in a file across restarts.
// What throws, a CIMException, leaves them as they were: CIM_ERR_FAILED also where they cannot be
// saved. Any thread may call.
class SubscriptionStore {
public:
    static constexpr std::size_t MOST = 1000;

    using Log = std::function<void(const std::string& line)>;

    // Reads the file. An entry that cannot be understood, or that refers to one, is told to the log
    // and kept at the file's end as it stands, for the next start. The schema must outlive this
    // object.
    SubscriptionStore(const Schema& schema, const std::string& file, const Log& log);

    // Those of exactly that class, with their paths. A subscription tells how long it still has;
    // one that has expired is not there, also not to be got.
    std::vector<Pegasus::CIMInstance> instances(const Pegasus::CIMNamespaceName& nameSpace,
                                                const std::string& className) const;
    // CIM_ERR_NOT_FOUND where there is none.
    Pegasus::CIMInstance get(const Pegasus::CIMObjectPath& path) const;

    // Where it is now. CIM_ERR_ALREADY_EXISTS; CIM_ERR_SERVER_LIMITS_EXCEEDED beyond MOST.
    Pegasus::CIMObjectPath create(const Pegasus::CIMNamespaceName& nameSpace,
                                  const Pegasus::CIMInstance& given);

    // CIM_ERR_FAILED for a filter or a destination that a subscription refers to, as for remove().
    void modify(const Pegasus::CIMObjectPath& path, const Pegasus::CIMInstance& given,
                const Pegasus::CIMPropertyList& properties);
    void remove(const Pegasus::CIMObjectPath& path);

    // Removes the subscriptions that have expired, and answers what they were. Where that cannot be
    // saved it is told to the log: they will have expired at the next start, too.
    std::vector<SubscriptionTerms> removeExpired(const Log& log);
    // In how many seconds one will; none where none will.
    std::optional<std::uint64_t> secondsToExpiry() const;

    // Of a subscription that is there; and of all.
    SubscriptionTerms terms(const Pegasus::CIMObjectPath& path) const;
    std::vector<SubscriptionTerms> allTerms() const;

    // What SubscriptionTerms has as the destination.
    std::string identity(const Pegasus::CIMObjectPath& path) const { return _rules.identity(path); }

private:
    struct Entry {
        std::string identity;
        Pegasus::CIMInstance instance;
    };
    using Entries = std::vector<Entry>;

    void _load(const Log& log);
    bool _loadEntry(const std::string& text, bool isSubscription, std::string& reason);
    Entry _checked(const Pegasus::CIMInstance& made) const;
    const Entry* _find(const std::string& identity) const;
    const Entry& _existing(const Pegasus::CIMObjectPath& path) const;
    const Entry& _referenced(const Pegasus::CIMInstance& subscription, const char* property,
                             const char* className) const;
    void _refuseIfUsed(const Entry& entry) const;
    SubscriptionTerms _terms(const Entry& entry) const;
    void _replace(Entries entries);
    void _save(const Entries& entries);

    const SubscriptionRules _rules;
    const Schema& _schema;
    mutable std::mutex _mutex;
    SubscriptionFile _file;
    Entries _entries;
    std::vector<std::string> _unread;
};

}  // namespace QZ
