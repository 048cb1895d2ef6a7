// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionStore.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <utility>

#include "CimText.h"
#include "SubscriptionTime.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr Uint16 ENABLED = 2;  // SubscriptionState

std::string _className(const CIMInstance& instance) {
    return make_string(instance.getClassName().getString());
}

bool _isSubscription(const CIMInstance& instance) {
    return sameName(_className(instance), SUBSCRIPTION_CLASS);
}

// A copy: handles that are copied share what they hold.
CIMInstance _copied(const CIMInstance& instance) {
    return instance.clone();
}

bool _hasExpired(const CIMInstance& instance) {
    return _isSubscription(instance) && secondsRemaining(instance) == std::uint64_t(0);
}

// As a client sees it.
CIMInstance _shown(const CIMInstance& instance) {
    CIMInstance shown = _copied(instance);
    if (const auto seconds = secondsRemaining(instance)) {
        setValue(shown, SUBSCRIPTION_REMAINING, CIMValue(Uint64(*seconds)));
    }
    return shown;
}

}  // namespace

SubscriptionStore::SubscriptionStore(const Schema& schema, const std::string& file, const Log& log)
    : _rules(schema), _schema(schema), _file(file) {
    try {
        _load(log);
    } catch (const Error& error) {
        // Served without; what would overwrite the file fails.
        log(error.what());
    }
}

void SubscriptionStore::_load(const Log& log) {
    std::vector<std::string> left = _file.read();
    // What is referred to first, in whatever order they stand.
    for (const bool isSubscription : {false, true}) {
        std::vector<std::string> next;
        for (std::string& text : left) {
            std::string reason;
            if (_loadEntry(text, isSubscription, reason)) {
                continue;
            }
            if (isSubscription) {
                log("a subscription, or what one refers to, is kept but not used: " + reason);
            }
            next.push_back(std::move(text));
        }
        left = std::move(next);
    }
    _unread = std::move(left);
}

bool SubscriptionStore::_loadEntry(const std::string& text, bool isSubscription,
                                   std::string& reason) {
    try {
        const CIMInstance read = readEntry(text, _schema);
        if (_isSubscription(read) == isSubscription) {
            _entries.push_back(_checked(_rules.restored(read.getPath().getNameSpace(), read)));
            return true;
        }
        reason = "it is of no use without others";
    } catch (const Error& error) {
        reason = error.what();
    } catch (const Exception& exception) {
        reason = make_string(exception.getMessage());
    }
    return false;
}

// The entry of a new instance, if there may be one.
SubscriptionStore::Entry SubscriptionStore::_checked(const CIMInstance& made) const {
    if (_isSubscription(made)) {
        _referenced(made, "Filter", FILTER_CLASS);
        _referenced(made, "Handler", DESTINATION_CLASS);
    }
    Entry entry{_rules.identity(made.getPath()), made};
    if (_find(entry.identity)) {
        throw CIMException(CIM_ERR_ALREADY_EXISTS, made.getPath().toString());
    }
    if (_entries.size() >= MOST) {
        throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED,
                           "there are as many subscriptions as the server keeps");
    }
    return entry;
}

const SubscriptionStore::Entry* SubscriptionStore::_find(const std::string& identity) const {
    const auto found = std::find_if(_entries.begin(), _entries.end(),
                                    [&](const Entry& entry) { return entry.identity == identity; });
    return found == _entries.end() ? nullptr : &*found;
}

const SubscriptionStore::Entry& SubscriptionStore::_existing(const CIMObjectPath& path) const {
    const Entry* const entry = _find(_rules.identity(path));
    if (!entry || _hasExpired(entry->instance)) {
        throw CIMException(CIM_ERR_NOT_FOUND, path.toString());
    }
    return *entry;
}

const SubscriptionStore::Entry& SubscriptionStore::_referenced(const CIMInstance& subscription,
                                                               const char* property,
                                                               const char* className) const {
    const CIMObjectPath path = referenceOf(subscription, property);
    const Entry* entry = nullptr;
    try {
        entry = _find(_rules.identity(path));
    } catch (const CIMException&) {
        // No path of a class that is kept here: nothing there, either.
    }
    if (!entry || !sameName(_className(entry->instance), className)) {
        throw CIMException(CIM_ERR_INVALID_PARAMETER,
                           make_String(std::string(property) + ": there is no " + className + " ") +
                               path.toString());
    }
    return *entry;
}

void SubscriptionStore::_refuseIfUsed(const Entry& entry) const {
    if (_isSubscription(entry.instance)) {
        return;
    }
    for (const Entry& other : _entries) {
        if (!_isSubscription(other.instance)) {
            continue;
        }
        for (const char* const property : {"Filter", "Handler"}) {
            if (_rules.identity(referenceOf(other.instance, property)) == entry.identity) {
                throw CIMException(CIM_ERR_FAILED,
                                   "a subscription refers to it: delete that first");
            }
        }
    }
}

// Saved before they count.
void SubscriptionStore::_save(const Entries& entries) {
    std::vector<std::string> texts;
    texts.reserve(entries.size() + _unread.size());
    for (const Entry& entry : entries) {
        texts.push_back(entryText(entry.instance));
    }
    texts.insert(texts.end(), _unread.begin(), _unread.end());
    _file.save(texts);
}

void SubscriptionStore::_replace(Entries entries) {
    try {
        _save(entries);
    } catch (const Error& error) {
        throw CIMException(CIM_ERR_FAILED, make_String(error.what()));
    }
    _entries = std::move(entries);
}

std::vector<CIMInstance> SubscriptionStore::instances(const CIMNamespaceName& nameSpace,
                                                      const std::string& className) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    std::vector<CIMInstance> found;
    for (const Entry& entry : _entries) {
        if (sameName(_className(entry.instance), className) &&
            entry.instance.getPath().getNameSpace().equal(nameSpace) &&
            !_hasExpired(entry.instance)) {
            found.push_back(_shown(entry.instance));
        }
    }
    return found;
}

CIMInstance SubscriptionStore::get(const CIMObjectPath& path) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _shown(_existing(path).instance);
}

CIMObjectPath SubscriptionStore::create(const CIMNamespaceName& nameSpace,
                                        const CIMInstance& given) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const CIMInstance made = _rules.made(nameSpace, given);
    Entries entries = _entries;
    entries.push_back(_checked(made));
    _replace(std::move(entries));
    return made.getPath();
}

void SubscriptionStore::modify(const CIMObjectPath& path, const CIMInstance& given,
                               const CIMPropertyList& properties) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const Entry& entry = _existing(path);
    _refuseIfUsed(entry);
    Entries entries = _entries;
    entries[std::size_t(&entry - _entries.data())].instance =
        _rules.changed(entry.instance, given, properties);
    _replace(std::move(entries));
}

void SubscriptionStore::remove(const CIMObjectPath& path) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const Entry& entry = _existing(path);
    _refuseIfUsed(entry);
    Entries entries = _entries;
    entries.erase(entries.begin() + (&entry - _entries.data()));
    _replace(std::move(entries));
}

std::vector<SubscriptionTerms> SubscriptionStore::removeExpired(const Log& log) {
    const std::lock_guard<std::mutex> lock(_mutex);
    std::vector<SubscriptionTerms> removed;
    Entries left;
    for (const Entry& entry : _entries) {
        if (_hasExpired(entry.instance)) {
            removed.push_back(_terms(entry));
        } else {
            left.push_back(entry);
        }
    }
    if (removed.empty()) {
        return removed;
    }
    try {
        _save(left);
    } catch (const Error& error) {
        log(error.what());
    }
    _entries = std::move(left);
    return removed;
}

std::optional<std::uint64_t> SubscriptionStore::secondsToExpiry() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    std::optional<std::uint64_t> first;
    for (const Entry& entry : _entries) {
        const std::optional<std::uint64_t> seconds =
            _isSubscription(entry.instance) ? secondsRemaining(entry.instance) : std::nullopt;
        if (seconds && (!first || *seconds < *first)) {
            first = seconds;
        }
    }
    return first;
}

SubscriptionTerms SubscriptionStore::_terms(const Entry& entry) const {
    const Entry& filter = _referenced(entry.instance, "Filter", FILTER_CLASS);
    const Entry& destination = _referenced(entry.instance, "Handler", DESTINATION_CLASS);
    SubscriptionTerms terms;
    terms.subscription = _copied(entry.instance);
    terms.wanted = _rules.filterTerms(filter.instance);
    terms.destination = destination.identity;
    terms.url = textOf(destination.instance, "Destination");
    terms.isEnabled = numberOf(entry.instance, "SubscriptionState") == ENABLED;
    return terms;
}

SubscriptionTerms SubscriptionStore::terms(const CIMObjectPath& path) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _terms(_existing(path));
}

std::vector<SubscriptionTerms> SubscriptionStore::allTerms() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    std::vector<SubscriptionTerms> all;
    for (const Entry& entry : _entries) {
        if (_isSubscription(entry.instance)) {
            all.push_back(_terms(entry));
        }
    }
    return all;
}

}  // namespace QZ
