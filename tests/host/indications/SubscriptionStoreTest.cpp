// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionStore.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "ManualClock.h"
#include "SubscriptionParts.h"
#include "SubscriptionTime.h"
#include "TestMachine.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

const CIMNamespaceName _interop("root/interop");
const CIMNamespaceName _model("root/tavqz");
constexpr const char* _name = "data/indications.mof";

// A data folder, with a store and another one after a restart.
class SubscriptionStoreTest : public testing::Test {
protected:
    SubscriptionStoreTest() { restart(); }

    void restart() {
        log.clear();
        store = std::make_unique<SubscriptionStore>(
            alertSchema(), machine.folder().file(_name),
            [this](const std::string& line) { log.push_back(line); });
    }

    CIMObjectPath subscribe(const char* name = "a", Uint64 seconds = 0) {
        Parts subscribed = subscription(store->create(_interop, filter(name)),
                                        store->create(_interop, destination(name)));
        if (seconds != 0) {
            subscribed.set(SUBSCRIPTION_DURATION, seconds);
        }
        return store->create(_interop, subscribed);
    }

    std::vector<SubscriptionTerms> removeExpired() {
        return store->removeExpired([this](const std::string& line) { log.push_back(line); });
    }

    std::size_t count() const {
        return store->instances(_interop, FILTER_CLASS).size() +
               store->instances(_interop, DESTINATION_CLASS).size() +
               store->instances(_interop, SUBSCRIPTION_CLASS).size();
    }

    TestMachine machine;
    std::vector<std::string> log;
    std::unique_ptr<SubscriptionStore> store;
};

}  // namespace

TEST_F(SubscriptionStoreTest, KeepsWhatIsCreatedAcrossRestarts) {
    const CIMObjectPath path = subscribe();
    const CIMInstance before = store->get(path);
    restart();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_TRUE(store->get(path).identical(before));
    EXPECT_EQ(count(), 3U);
    EXPECT_TRUE(store->instances(_model, FILTER_CLASS).empty());
    const std::vector<SubscriptionTerms> all = store->allTerms();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].url, "http://127.0.0.1:1/");
    EXPECT_EQ(wqlText(all[0].wanted.query), "SELECT * FROM TEST_Alert");
    EXPECT_THAT(all[0].wanted.nameSpaces, ElementsAre("root/tavqz"));
    EXPECT_TRUE(all[0].isEnabled);
}

TEST_F(SubscriptionStoreTest, KeepsAnyText) {
    const std::string text = "\"\\\n#pragma namespace (\"root/x\")\n\xE2\x82\xAC\xF0\x9F\x98\x80";
    const CIMObjectPath path = store->create(_model, filter(text.c_str()).set("ElementName", text));
    restart();
    EXPECT_EQ(textOf(store->get(path), "Name"), text);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SubscriptionStoreTest, IsReadableByItsOwnerAlone) {
    subscribe();
    struct stat status {};
    ASSERT_EQ(stat(machine.folder().file(_name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(SubscriptionStoreTest, HasEachOnce) {
    subscribe();
    EXPECT_THAT(refusal([&] { store->create(_interop, filter("a")); }), StartsWith("11 "));
    EXPECT_THAT(refusal([&] {
                    store->create(
                        _interop,
                        subscription(store->instances(_interop, FILTER_CLASS)[0].getPath(),
                                     store->instances(_interop, DESTINATION_CLASS)[0].getPath()));
                }),
                StartsWith("11 "));
    EXPECT_EQ(refusal([&] { store->create(_model, filter("a")); }), "accepted");
}

TEST_F(SubscriptionStoreTest, RefersAcrossNamespaces) {
    const CIMObjectPath path =
        store->create(_model, subscription(store->create(_interop, filter("a")),
                                           store->create(_model, destination("a"))));
    EXPECT_EQ(store->terms(path).url, "http://127.0.0.1:1/");
    restart();
    EXPECT_EQ(store->allTerms().size(), 1U);
}

TEST_F(SubscriptionStoreTest, RefusesAReferenceToNothing) {
    const CIMObjectPath ofFilter = store->create(_interop, filter("a"));
    const CIMObjectPath toDestination = store->create(_interop, destination("a"));
    const CIMObjectPath nowhere(
        "root/interop:CIM_IndicationFilter.CreationClassName=\"x\","
        "Name=\"x\",SystemCreationClassName=\"x\",SystemName=\"x\"");
    const auto refused = [&](const CIMObjectPath& left, const CIMObjectPath& right) {
        return refusal([&] { store->create(_interop, subscription(left, right)); });
    };
    EXPECT_THAT(refused(nowhere, toDestination), StartsWith("4 Filter: there is no"));
    EXPECT_THAT(refused(ofFilter, nowhere), StartsWith("4 Handler: there is no"));
    EXPECT_THAT(refused(ofFilter, ofFilter), StartsWith("4 Handler: there is no"));
    EXPECT_THAT(refused(ofFilter, CIMObjectPath("root/tavqz:TAVIRA_Lease.Identifier=\"x\"")),
                StartsWith("4 Handler: there is no"));
    EXPECT_EQ(refused(ofFilter, toDestination), "accepted");
}

TEST_F(SubscriptionStoreTest, KeepsWhatASubscriptionRefersTo) {
    const CIMObjectPath path = subscribe();
    const CIMInstance kept = store->get(path);
    for (const char* const property : {"Filter", "Handler"}) {
        const CIMObjectPath used = referenceOf(kept, property);
        EXPECT_THAT(refusal([&] { store->remove(used); }),
                    StartsWith("1 a subscription refers to it"));
        EXPECT_THAT(refusal([&] { store->modify(used, store->get(used), CIMPropertyList()); }),
                    StartsWith("1 a subscription refers to it"));
    }
    store->remove(path);
    store->remove(referenceOf(kept, "Filter"));
    store->remove(referenceOf(kept, "Handler"));
    EXPECT_EQ(count(), 0U);
    restart();
    EXPECT_EQ(count(), 0U);
    EXPECT_THAT(refusal([&] { store->get(path); }), StartsWith("6 "));
    EXPECT_THAT(refusal([&] { store->remove(path); }), StartsWith("6 "));
    EXPECT_THAT(refusal([&] { store->modify(path, kept, CIMPropertyList()); }), StartsWith("6 "));
}

TEST_F(SubscriptionStoreTest, ChangesASubscription) {
    const CIMObjectPath path = subscribe();
    store->modify(path, Parts("CIM_IndicationSubscription").set("SubscriptionState", Uint16(4)),
                  CIMPropertyList());
    EXPECT_FALSE(store->terms(path).isEnabled);
    restart();
    EXPECT_FALSE(store->terms(path).isEnabled);
    EXPECT_THAT(refusal([&] {
                    store->modify(
                        path,
                        Parts("CIM_IndicationSubscription").set("SubscriptionState", Uint16(3)),
                        CIMPropertyList());
                }),
                StartsWith("4 SubscriptionState: "));
}

TEST_F(SubscriptionStoreTest, HandsOutCopies) {
    const CIMObjectPath path = subscribe();
    CIMInstance copy = store->get(path);
    copy.removeProperty(0);
    EXPECT_NE(store->get(path).getPropertyCount(), copy.getPropertyCount());
}

TEST_F(SubscriptionStoreTest, SetsDamagedEntriesAsideAndLosesNone) {
    subscribe("a");
    subscribe("b");
    std::string text = machine.folder().read(_name);
    // The destination of the second subscription.
    const std::string good =
        "Name = \"b\";\n    PersistenceType = 2;\n    Destination = \"http://127.0.0.1:1/\"";
    ASSERT_NE(text.find(good), std::string::npos) << text;
    const std::string damaged =
        "Name = \"b\";\n    PersistenceType = 2;\n    Destination = \"http://127.0.";
    text.replace(text.find(good), good.size(), damaged);
    machine.folder().write(_name, "torn line\n" + text);
    restart();
    EXPECT_EQ(log.size(), 3U) << "the torn line, the destination, the subscription";
    EXPECT_EQ(store->instances(_interop, FILTER_CLASS).size(), 2U);
    EXPECT_EQ(store->instances(_interop, DESTINATION_CLASS).size(), 1U);
    EXPECT_EQ(store->allTerms().size(), 1U);
    EXPECT_EQ(machine.folder().read(_name), "torn line\n" + text) << "reading changes nothing";

    store->create(_interop, filter("c"));
    text = machine.folder().read(_name);
    EXPECT_THAT(text, HasSubstr("torn line\n"));
    EXPECT_THAT(text, HasSubstr(damaged));
    // Somebody mends it.
    text.replace(text.find(damaged), damaged.size(), good);
    machine.folder().write(_name, text);
    restart();
    EXPECT_EQ(store->allTerms().size(), 2U);
}

TEST_F(SubscriptionStoreTest, OverwritesNothingItCouldNotReadOrAnotherServerWrote) {
    subscribe();
    const std::string text = machine.folder().read(_name);
    machine.folder().write(_name, text + "// changed\n");
    EXPECT_THAT(refusal([&] { store->create(_interop, filter("b")); }),
                HasSubstr("another server has changed it"));
    EXPECT_EQ(count(), 3U) << "what could not be saved is not there";

    machine.folder().write(_name, std::string(SubscriptionFile::LARGEST + 1, ' '));
    restart();
    EXPECT_THAT(log, ElementsAre(HasSubstr("it is no file of ours")));
    EXPECT_THAT(refusal([&] { store->create(_interop, filter("b")); }), StartsWith("1 "));
    EXPECT_EQ(machine.folder().read(_name).size(), SubscriptionFile::LARGEST + 1);
}

TEST_F(SubscriptionStoreTest, IsBounded) {
    for (std::size_t i = 0; i < 20; ++i) {
        store->create(_interop, filter(std::to_string(i).c_str()));
    }
    std::string text = machine.folder().read(_name);
    const std::size_t begin = text.find("#pragma");
    const std::string one = text.substr(begin, text.find("#pragma", begin + 1) - begin);
    const std::size_t at = one.find("Name = \"0\"");
    for (std::size_t i = 20; i < SubscriptionStore::MOST; ++i) {
        text += std::string(one).replace(at, 10, "Name = \"" + std::to_string(i) + "\"");
    }
    machine.folder().write(_name, text);
    restart();
    EXPECT_EQ(count(), SubscriptionStore::MOST);
    EXPECT_THAT(refusal([&] { store->create(_interop, filter("more")); }), StartsWith("27 "));
}

TEST_F(SubscriptionStoreTest, LetsASubscriptionExpire) {
    ManualClock clock;
    const CIMObjectPath lasting = subscribe("lasting");
    const CIMObjectPath passing = subscribe("passing", 100);
    EXPECT_EQ(store->secondsToExpiry(), std::uint64_t(100));
    EXPECT_EQ(textOf(store->get(passing), "SubscriptionTimeRemaining"), "100");
    EXPECT_EQ(textOf(store->get(lasting), "SubscriptionTimeRemaining"), "");
    clock.sleepMilliseconds(99'999);
    EXPECT_EQ(textOf(store->get(passing), "SubscriptionTimeRemaining"), "1");
    EXPECT_THAT(removeExpired(), IsEmpty());
    clock.sleepMilliseconds(1);
    EXPECT_THAT(refusal([&] { store->get(passing); }), StartsWith("6 "));
    EXPECT_THAT(refusal([&] { store->remove(passing); }), StartsWith("6 "));
    EXPECT_EQ(store->instances(_interop, SUBSCRIPTION_CLASS).size(), 1U) << "before its removal";
    EXPECT_EQ(removeExpired().size(), 1U);
    EXPECT_EQ(store->secondsToExpiry(), std::nullopt);
    EXPECT_THAT(removeExpired(), IsEmpty());
    EXPECT_EQ(count(), 5U) << "its filter and destination stay";
}

TEST_F(SubscriptionStoreTest, CountsTheTimeOfRestarts) {
    ManualClock clock;
    const CIMObjectPath path = subscribe("a", 3600);
    EXPECT_THAT(machine.folder().read(_name), Not(HasSubstr("TimeRemaining")));
    clock.sleepMilliseconds(1'000'000);
    restart();
    EXPECT_EQ(textOf(store->get(path), "SubscriptionTimeRemaining"), "2600");
    clock.sleepMilliseconds(2'600'000);
    restart();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(removeExpired().size(), 1U);
    restart();
    EXPECT_THAT(removeExpired(), IsEmpty()) << "it is gone from the file too";
}

TEST_F(SubscriptionStoreTest, CountsAChangedDurationFromTheStart) {
    ManualClock clock;
    const CIMObjectPath path = subscribe("a", 100);
    clock.sleepMilliseconds(50'000);
    const auto set = [&](const CIMValue& duration) {
        Parts change("CIM_IndicationSubscription");
        change.instance.addProperty(CIMProperty(CIMName(SUBSCRIPTION_DURATION), duration));
        store->modify(path, change, CIMPropertyList());
    };
    set(CIMValue(Uint64(200)));
    EXPECT_EQ(textOf(store->get(path), "SubscriptionTimeRemaining"), "150");
    EXPECT_THAT(refusal([&] { set(CIMValue(Uint64(50))); }),
                StartsWith("4 SubscriptionDuration: that time is over already"));
    set(CIMValue(CIMTYPE_UINT64, false));
    EXPECT_EQ(textOf(store->get(path), "SubscriptionTimeRemaining"), "");
    EXPECT_EQ(store->secondsToExpiry(), std::nullopt);
    set(CIMValue(~Uint64(0)));
    EXPECT_EQ(textOf(store->get(path), "SubscriptionTimeRemaining"), "18446744073709551565");
}

TEST_F(SubscriptionStoreTest, GivesNothingForAClockThatIsPutBack) {
    ManualClock clock;
    const CIMObjectPath path = subscribe("a", 100);
    clock.setSeconds(clock.seconds() - 1000);
    EXPECT_EQ(textOf(store->get(path), "SubscriptionTimeRemaining"), "100");
}

TEST_F(SubscriptionStoreTest, RemovesWhatHasExpiredEvenWhereItCannotSave) {
    ManualClock clock;
    subscribe("a", 1);
    std::filesystem::remove_all(machine.folder().file("data"));
    machine.folder().write("data", "no folder");
    clock.sleepMilliseconds(1000);
    EXPECT_EQ(removeExpired().size(), 1U);
    EXPECT_EQ(log.size(), 1U);
    EXPECT_TRUE(store->instances(_interop, SUBSCRIPTION_CLASS).empty());
}
