// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMObjectPath.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

CIMObjectPath path(const char* name) {
    return CIMObjectPath(String(name));
}

Array<CIMKeyBinding> keys(const CIMKeyBinding& first) {
    return Array<CIMKeyBinding>(1, first);
}

Array<CIMKeyBinding> keys(const CIMKeyBinding& first, const CIMKeyBinding& second) {
    Array<CIMKeyBinding> both = keys(first);
    both.append(second);
    return both;
}

const CIMKeyBinding idOne("Id", "1", CIMKeyBinding::NUMERIC);
const CIMKeyBinding nameX("Name", "x", CIMKeyBinding::STRING);

TEST(CIMObjectPath, IsMadeOfItsParts) {
    const CIMObjectPath made("atlas:5989", CIMNamespaceName("root/tavqz"), CIMName("Lamp"),
                             keys(nameX, idOne));
    EXPECT_EQ("//atlas:5989/root/tavqz:Lamp.Id=1,Name=\"x\"", text(made.toString()));
    EXPECT_EQ("atlas:5989", text(made.getHost()));
    EXPECT_EQ("root/tavqz", text(made.getNameSpace().getString()));
    EXPECT_EQ("Lamp", text(made.getClassName().getString()));
    ASSERT_EQ(2U, made.getKeyBindings().size());
    EXPECT_TRUE(made.getKeyBindings()[0] == idOne);
}

TEST(CIMObjectPath, IsEmptyByDefaultAndWhenCleared) {
    CIMObjectPath cleared = path("//h/a:B.K=1");
    cleared.clear();
    for (const CIMObjectPath& empty : {CIMObjectPath(), cleared}) {
        EXPECT_EQ("", text(empty.toString()));
        EXPECT_TRUE(empty.getClassName().isNull());
        EXPECT_TRUE(empty.getNameSpace().isNull());
        EXPECT_EQ(0U, empty.getKeyBindings().size());
    }
    EXPECT_TRUE(cleared == CIMObjectPath());
}

TEST(CIMObjectPath, SettersChangeThisCopyOnly) {
    const CIMObjectPath original = path("//h/a:B.K=1");
    CIMObjectPath copy = original;
    copy.setHost("other");
    copy.setNameSpace(CIMNamespaceName("c"));
    copy.setClassName(CIMName("D"));
    copy.setKeyBindings(keys(nameX, idOne));
    EXPECT_EQ("//other/c:D.Id=1,Name=\"x\"", text(copy.toString()));
    EXPECT_EQ("//h/a:B.K=1", text(original.toString()));
    copy.set(String(), CIMNamespaceName(), CIMName("E"));
    EXPECT_EQ("E", text(copy.toString()));
    copy = String("F.G=2");
    EXPECT_EQ("F.G=2", text(copy.toString()));
    copy.set("H");
    EXPECT_EQ("H", text(copy.toString()));
}

TEST(CIMObjectPath, StaysAsItWasWhereASetterThrows) {
    CIMObjectPath kept = path("//h/a:B.K=1");
    EXPECT_THROW(kept.set("B.K"), MalformedObjectNameException);
    EXPECT_THROW(kept.setHost("not a host"), MalformedObjectNameException);
    EXPECT_THROW(kept.set("not a host", CIMNamespaceName(), CIMName("E")),
                 MalformedObjectNameException);
    const CIMKeyBinding noPath("R", "no path", CIMKeyBinding::REFERENCE);
    EXPECT_THROW(kept.setKeyBindings(keys(noPath)), MalformedObjectNameException);
    EXPECT_EQ("//h/a:B.K=1", text(kept.toString()));
}

TEST(CIMObjectPath, TakesTheMachinesOwnNameAsHost) {
    char name[256] = "";
    ASSERT_EQ(0, gethostname(name, sizeof name - 1));
    CIMObjectPath own;
    own.setHost(name);
    EXPECT_EQ(name, text(own.getHost()));
}

TEST(CIMObjectPath, IsEqualIgnoringCaseOfAllButTextValues) {
    EXPECT_TRUE(path("//HOST/ROOT/A:LAMP.ID=1,NAME=\"x\"") ==
                path("//host/root/a:Lamp.id=0x1,name=\"x\""));
    EXPECT_FALSE(path("//host/root/a:Lamp.Name=\"X\"") == path("//host/root/a:Lamp.Name=\"x\""));
    EXPECT_TRUE(path("Lamp.On=TRUE") == path("Lamp.On=true"));
}

TEST(CIMObjectPath, DiffersByEachOfItsParts) {
    const CIMObjectPath whole = path("//host/root/a:Lamp.Id=1");
    for (const char* other :
         {"//hosts/root/a:Lamp.Id=1", "root/a:Lamp.Id=1", "//host/root/b:Lamp.Id=1",
          "//host/root/a:Light.Id=1", "//host/root/a:Lamp.Id=2", "//host/root/a:Lamp.No=1",
          "//host/root/a:Lamp.Id=1,No=1", "//host/root/a:Lamp", "//host/root/a:Lamp.Id=\"1\""}) {
        EXPECT_TRUE(whole != path(other)) << other;
        EXPECT_FALSE(whole.identical(path(other))) << other;
    }
}

TEST(CIMObjectPath, IsEqualWhateverTheOrderOfKeys) {
    EXPECT_TRUE(path("Lamp.Id=1,Name=\"x\"") == path("Lamp.Name=\"x\",Id=1"));
    EXPECT_EQ("Lamp.a=1,B=2,c=3", text(path("Lamp.c=3,B=2,a=1").toString()));
    const CIMObjectPath forward("", CIMNamespaceName(), CIMName("Lamp"), keys(idOne, nameX));
    const CIMObjectPath backward("", CIMNamespaceName(), CIMName("Lamp"), keys(nameX, idOne));
    EXPECT_TRUE(forward == backward);
}

TEST(CIMObjectPath, IsEqualWhateverTheOrderOfKeysInsideAReference) {
    const CIMKeyBinding forward("Of", "Lamp.Id=1,Name=\"x\"", CIMKeyBinding::REFERENCE);
    const CIMKeyBinding backward("Of", "Lamp.Name=\"x\",Id=1", CIMKeyBinding::REFERENCE);
    const CIMObjectPath x("", CIMNamespaceName(), CIMName("Light"), keys(forward));
    const CIMObjectPath y("", CIMNamespaceName(), CIMName("Light"), keys(backward));
    EXPECT_TRUE(x == y);
    EXPECT_EQ(text(x.toString()), text(y.toString()));
}

TEST(CIMObjectPath, HashesEqualPathsAlike) {
    const auto hash = [](const char* name) { return path(name).makeHashCode(); };
    EXPECT_EQ(hash("//HOST/ROOT/A:LAMP.NAME=\"x\",ID=0x10"),
              hash("//host/root/a:lamp.id=16,name=\"x\""));
    EXPECT_EQ(hash("L.On=true"), hash("L.ON=TRUE"));
    EXPECT_EQ(hash("L.N=-16"), hash("L.N=-0x10"));
    EXPECT_EQ(hash("L.Of=\"M.B=1,A=0x2\""), hash("l.of=\"m.a=2,b=1\""));
    EXPECT_NE(hash("Lamp.Id=1"), hash("Lamp.Id=2"));
    EXPECT_NE(hash("Lamp.Name=\"x\""), hash("Lamp.Name=\"X\""));
    EXPECT_NE(hash("a:Lamp"), hash("Lamp"));
    EXPECT_NE(hash("Lamp.Of=\"M.A=1\""), hash("Lamp.Of=\"M.A=2\""));
}

TEST(CIMObjectPath, AnArrayOfPathsIsAValueToo) {
    Array<CIMObjectPath> paths(1, path("Lamp.Id=1"));
    const Array<CIMObjectPath> copy = paths;
    paths[0].setClassName(CIMName("Light"));
    EXPECT_EQ("Lamp.Id=1", text(copy[0].toString()));
    EXPECT_EQ("Light.Id=1", text(paths[0].toString()));
}

}  // namespace
