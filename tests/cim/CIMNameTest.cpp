// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMName.h>
#include <gtest/gtest.h>

using namespace Pegasus;

TEST(CIMName, HoldsLegalNames) {
    for (const char* name : {"a", "_", "TAVIRA_Lease", "a1", "\xc2\x80", "\xef\xbf\xaf"})
        EXPECT_EQ(CIMName(name).getString(), name);
}

TEST(CIMName, RefusesOthers) {
    for (const char* name : {"", "1a", "a b", "a-b", "a.b", "a/b", "\x7f", "\xef\xbf\xb0"}) {
        EXPECT_THROW(CIMName{name}, InvalidNameException) << name;
        EXPECT_FALSE(CIMName::legal(name)) << name;
    }
    EXPECT_THROW(CIMName(static_cast<const char*>(nullptr)), Exception);
}

TEST(CIMName, KeepsItsValueWhenAssignmentIsRefused) {
    CIMName name("Lease");
    EXPECT_THROW(name = String("1"), InvalidNameException);
    EXPECT_EQ(name.getString(), "Lease");
    name = String("Warranty");
    EXPECT_EQ(name.getString(), "Warranty");
}

TEST(CIMName, IsNullUntilNamed) {
    CIMName name;
    EXPECT_TRUE(name.isNull());
    EXPECT_EQ(name, CIMName());
    name = CIMName("Lease");
    EXPECT_FALSE(name.isNull());
    name.clear();
    EXPECT_TRUE(name.isNull());
}

TEST(CIMName, ComparesIgnoringCase) {
    EXPECT_EQ(CIMName("TAVIRA_Lease"), CIMName("tavira_LEASE"));
    EXPECT_TRUE(CIMName("a").equal(CIMName("A")));
    EXPECT_NE(CIMName("Lease"), CIMName("Lease2"));
    EXPECT_NE(CIMName("Lease"), CIMName());
}

TEST(CIMNamespaceName, HoldsLegalNames) {
    for (const char* name : {"root", "root/tavqz", "root/PG_InterOp/x1"})
        EXPECT_EQ(CIMNamespaceName(name).getString(), name);
}

TEST(CIMNamespaceName, DropsALeadingSlash) {
    EXPECT_EQ(CIMNamespaceName("/root/tavqz").getString(), "root/tavqz");
    CIMNamespaceName name;
    name = String("/root");
    EXPECT_EQ(name.getString(), "root");
    EXPECT_TRUE(CIMNamespaceName::legal("/root"));
}

TEST(CIMNamespaceName, RefusesOthers) {
    for (const char* name :
         {"", "/", "//root", "root/", "root//x", "1root", "root/1", "root/a b", "root\\x"}) {
        EXPECT_THROW(CIMNamespaceName{name}, InvalidNamespaceNameException) << name;
        EXPECT_FALSE(CIMNamespaceName::legal(name)) << name;
    }
}

TEST(CIMNamespaceName, ComparesIgnoringCase) {
    EXPECT_EQ(CIMNamespaceName("root/TAVQZ"), CIMNamespaceName("ROOT/tavqz"));
    EXPECT_NE(CIMNamespaceName("root/tavqz"), CIMNamespaceName("root"));
    CIMNamespaceName name("root");
    EXPECT_TRUE(name.equal(CIMNamespaceName("/Root")));
    name.clear();
    EXPECT_TRUE(name.isNull());
}
