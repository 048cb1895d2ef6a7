// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/OperationContext.h>
#include <gtest/gtest.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

std::string userName(const OperationContext& context) {
    return text(IdentityContainer(context.get(IdentityContainer::NAME)).getUserName());
}

TEST(OperationContext, GivesBackWhatWasInserted) {
    OperationContext context;
    EXPECT_FALSE(context.contains(IdentityContainer::NAME));
    context.insert(IdentityContainer("ada"));
    EXPECT_TRUE(context.contains(IdentityContainer::NAME));
    EXPECT_TRUE(context.contains("IdentityContainer"));
    EXPECT_EQ("ada", userName(context));
    EXPECT_THROW(context.get(TimeoutContainer::NAME), Exception);
}

TEST(OperationContext, HoldsOneContainerOfEachName) {
    OperationContext context;
    context.insert(IdentityContainer("ada"));
    EXPECT_THROW(context.insert(IdentityContainer("eve")), Exception);
    EXPECT_EQ("ada", userName(context));
    context.set(IdentityContainer("bob"));
    EXPECT_EQ("bob", userName(context));
    context.set(context.get(IdentityContainer::NAME));
    EXPECT_EQ("bob", userName(context));
    EXPECT_THROW(context.set(TimeoutContainer(1)), Exception);
}

TEST(OperationContext, RemovesByNameAndAltogether) {
    OperationContext context;
    context.insert(IdentityContainer("ada"));
    context.insert(TimeoutContainer(5));
    context.remove(IdentityContainer::NAME);
    EXPECT_FALSE(context.contains(IdentityContainer::NAME));
    EXPECT_THROW(context.remove(IdentityContainer::NAME), Exception);
    EXPECT_TRUE(context.contains(TimeoutContainer::NAME));
    context.clear();
    EXPECT_FALSE(context.contains(TimeoutContainer::NAME));
}

TEST(OperationContext, CopiesAreIndependent) {
    OperationContext original;
    original.insert(IdentityContainer("ada"));
    OperationContext copy(original);
    copy.set(IdentityContainer("bob"));
    EXPECT_EQ("ada", userName(original));
    OperationContext assigned;
    assigned.insert(TimeoutContainer(5));
    assigned = copy;
    copy.clear();
    EXPECT_EQ("bob", userName(assigned));
    EXPECT_FALSE(assigned.contains(TimeoutContainer::NAME));
    OperationContext& self = assigned;
    assigned = self;
    EXPECT_EQ("bob", userName(assigned));
}

TEST(OperationContext, RefusesAContainerOfAnotherKind) {
    const TimeoutContainer timeout(5);
    const OperationContext::Container& unknown = timeout;
    EXPECT_THROW(IdentityContainer{unknown}, DynamicCastFailedException);
    EXPECT_EQ(5U, TimeoutContainer(unknown).getTimeOut());
}

TEST(OperationContext, CarriesEveryKindOfContainer) {
    OperationContext context;
    AcceptLanguageList accepted;
    accepted.insert(LanguageTag("de-AT"), Real32(0.5));
    ContentLanguageList written;
    written.append(LanguageTag("fr"));
    context.insert(AcceptLanguageListContainer(accepted));
    context.insert(ContentLanguageListContainer(written));
    context.insert(SubscriptionInstanceContainer(CIMInstance(CIMName("Sub"))));
    context.insert(SubscriptionInstanceNamesContainer(Array<CIMObjectPath>(2)));
    context.insert(SubscriptionFilterConditionContainer("A = 1", "WQL"));
    context.insert(SubscriptionFilterQueryContainer("SELECT *", "CQL", CIMNamespaceName("root")));
    context.insert(SnmpTrapOidContainer("1.3.6"));
    const OperationContext copy = context;
    const auto get = [&](const String& name) -> const OperationContext::Container& {
        return copy.get(name);
    };
    EXPECT_TRUE(AcceptLanguageListContainer(get("AcceptLanguageListContainer")).getLanguages() ==
                accepted);
    EXPECT_TRUE(ContentLanguageListContainer(get("ContentLanguageListContainer")).getLanguages() ==
                written);
    EXPECT_EQ("Sub", text(SubscriptionInstanceContainer(get("SubscriptionInstanceContainer"))
                              .getInstance()
                              .getClassName()
                              .getString()));
    EXPECT_EQ(2U, SubscriptionInstanceNamesContainer(get("SubscriptionInstanceNamesContainer"))
                      .getInstanceNames()
                      .size());
    const SubscriptionFilterConditionContainer condition(
        get("SubscriptionFilterConditionContainer"));
    EXPECT_EQ("A = 1 WQL",
              text(condition.getFilterCondition() + " " + condition.getQueryLanguage()));
    const SubscriptionFilterQueryContainer query(get("SubscriptionFilterQueryContainer"));
    EXPECT_EQ("SELECT * CQL root", text(query.getFilterQuery() + " " + query.getQueryLanguage() +
                                        " " + query.getSourceNameSpace().getString()));
    EXPECT_EQ("1.3.6", text(SnmpTrapOidContainer(get("SnmpTrapOidContainer")).getSnmpTrapOid()));
}

TEST(OperationContext, TakesContainersOfAProvidersOwn) {
    class Own : public OperationContext::Container {
    public:
        explicit Own(int& destroyed) : _destroyed(destroyed) {}
        String getName() const override { return "Own"; }
        Container* clone() const override { return new Own(_destroyed); }
        void destroy() override {
            ++_destroyed;
            delete this;
        }

    private:
        int& _destroyed;
    };
    int destroyed = 0;
    {
        OperationContext context;
        context.insert(Own(destroyed));
        context.set(Own(destroyed));
        EXPECT_EQ(1, destroyed);
        EXPECT_TRUE(dynamic_cast<const Own*>(&context.get("Own")));
    }
    EXPECT_EQ(2, destroyed);
}

}  // namespace
