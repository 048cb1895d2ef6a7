// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMObjectPath.h>
#include <gtest/gtest.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

CIMObjectPath path(const std::string& name) {
    return CIMObjectPath(String(name.c_str()));
}

CIMKeyBinding onlyKey(const std::string& name) {
    const CIMObjectPath parsed = path(name);
    EXPECT_EQ(1U, parsed.getKeyBindings().size()) << name;
    return parsed.getKeyBindings()[0];
}

std::string refusal(const std::string& name) {
    return thrownMessage([&] { path(name); });
}

TEST(ObjectPathText, ReadsEveryPart) {
    const CIMObjectPath whole = path(R"(//atlas:5989/root/tavqz:Lamp.B=TRUE,N=-5,S="v\"\\")");
    EXPECT_EQ("atlas:5989", text(whole.getHost()));
    EXPECT_EQ("root/tavqz", text(whole.getNameSpace().getString()));
    EXPECT_EQ("Lamp", text(whole.getClassName().getString()));
    const Array<CIMKeyBinding>& keys = whole.getKeyBindings();
    ASSERT_EQ(3U, keys.size());
    EXPECT_TRUE(keys[0] == CIMKeyBinding("B", "TRUE", CIMKeyBinding::BOOLEAN));
    EXPECT_TRUE(keys[1] == CIMKeyBinding("N", "-5", CIMKeyBinding::NUMERIC));
    EXPECT_TRUE(keys[2] == CIMKeyBinding("S", "v\"\\", CIMKeyBinding::STRING));
}

TEST(ObjectPathText, ComesBackAsItWasWritten) {
    for (const char* name :
         {"Lamp", "root/tavqz:Lamp", "//atlas/root/tavqz:Lamp", "//10.0.0.1:5988/root:Lamp",
          "//[::1]:5989/root:Lamp", R"(Lamp.Name="")", R"(Lamp.Name="a,b=c:d.e/f")",
          R"(Lamp.Name="back\\slash and \"quote\"")",
          "Lamp.Name=\"Gr\xc3\xb6\xc3\x9f\x65 \xe2\x82\xac\"", "Lamp.Name=\"\xf0\x9f\x92\xa1\"",
          "Lamp.Id=18446744073709551615", "Lamp.Id=0xFF", "Lamp.Id=-9223372036854775808",
          "Lamp.On=FALSE", R"(Light.Of="root:Lamp.Name=\"say \\\"x\\\"\"",To=2)"})
        EXPECT_EQ(name, text(path(name).toString()));
}

TEST(ObjectPathText, TakesQuotedPathsWithKeysForReferences) {
    EXPECT_EQ(CIMKeyBinding::REFERENCE, onlyKey(R"(Light.Of="Lamp.Id=1")").getType());
    EXPECT_EQ("Lamp.Id=1", text(onlyKey(R"(Light.Of="Lamp.Id=1")").getValue()));
    EXPECT_EQ(CIMKeyBinding::REFERENCE,
              onlyKey(R"(Light.Of="//h/root:Lamp.Name=\"a\"")").getType());
    EXPECT_EQ(CIMKeyBinding::STRING, onlyKey(R"(Light.Of="Lamp")").getType());
    EXPECT_EQ(CIMKeyBinding::STRING, onlyKey(R"(Light.Of="a=b")").getType());
    EXPECT_EQ(CIMKeyBinding::STRING, onlyKey(R"(Light.Of="Lamp.Id=one")").getType());
}

TEST(ObjectPathText, SortsTheKeysOfNestedReferences) {
    EXPECT_EQ(R"(Light.Of="Lamp.A=\"Bulb.P=1,Q=2\",B=1")",
              text(path(R"(Light.Of="Lamp.B=1,A=\"Bulb.Q=2,P=1\"")").toString()));
}

TEST(ObjectPathText, ReadsDeepNestingInReasonableTime) {
    // Every level doubles the backslashes; all are one chain, not a tree.
    CIMObjectPath nested = path("Lamp.Id=1");
    for (int level = 0; level < 12; ++level) {
        const CIMKeyBinding of("Of", nested.toString(), CIMKeyBinding::REFERENCE);
        nested.set(String(), CIMNamespaceName(), CIMName("L"), Array<CIMKeyBinding>(1, of));
    }
    EXPECT_TRUE(path(text(nested.toString())) == nested);
}

TEST(ObjectPathText, WritesBooleansInUpperCase) {
    EXPECT_EQ("Lamp.On=TRUE", text(path("Lamp.On=True").toString()));
    EXPECT_EQ("Lamp.On=FALSE", text(path("Lamp.On=fALSE").toString()));
}

TEST(ObjectPathText, LeavesColonsAndSlashesOfValuesAlone) {
    const CIMObjectPath plain = path(R"(Lamp.Name="a:b//c/d:e")");
    EXPECT_TRUE(plain.getNameSpace().isNull());
    EXPECT_EQ("a:b//c/d:e", text(plain.getKeyBindings()[0].getValue()));
}

TEST(ObjectPathText, AcceptsAnEmptyOrUnfinishedListOfKeys) {
    EXPECT_EQ("Lamp", text(path("Lamp.").toString()));
    EXPECT_EQ("Lamp.Id=1", text(path("Lamp.Id=1,").toString()));
}

TEST(ObjectPathText, DropsTheSlashBeforeANamespace) {
    EXPECT_EQ("root/tavqz:Lamp", text(path("/root/tavqz:Lamp").toString()));
}

TEST(ObjectPathText, RefusesWhatIsNoPath) {
    for (const char* name : {"",
                             "1Lamp",
                             "La mp",
                             ".Id=1",
                             "Lamp.Id",
                             "Lamp.=1",
                             "Lamp.I d=1",
                             "Lamp.Id=",
                             "Lamp.Id=one",
                             "Lamp.Id=1.5",
                             "Lamp.Id=01",
                             "Lamp.Id=-",
                             "Lamp.Id=+1",
                             "Lamp.Id=18446744073709551616",
                             "Lamp.Id=-9223372036854775809",
                             "Lamp.On=T",
                             "Lamp.On=TRUEST",
                             "Lamp.Name=\"x",
                             "Lamp.Name=\"x\\",
                             "Lamp.Name=\"x\\n\"",
                             "Lamp.Name=\"x\"Id=1",
                             "Lamp.Id=1;No=2",
                             "Lamp.@",
                             "ro ot:Lamp",
                             ":Lamp",
                             "//atlas",
                             "//atlas/Lamp",
                             "//atlas/:Lamp",
                             "///root:Lamp",
                             "//at las/root:Lamp"})
        EXPECT_THROW(path(name), MalformedObjectNameException) << name;
}

TEST(ObjectPathText, SaysWhatIsWrongWithWhich) {
    for (const char* name : {"Lamp.Id", "//atlas", "Lamp.On=Talse", "Lamp.Name=\"x"}) {
        EXPECT_NE(std::string::npos, refusal(name).find(name)) << refusal(name);
        EXPECT_NE(std::string::npos, refusal(name).find("reason")) << refusal(name);
    }
    EXPECT_NE(refusal("Lamp.Id"), refusal("Lamp.Id=x"));
}

TEST(ObjectPathText, KnowsHostsFromOtherText) {
    const auto host = [](const char* name) {
        return CIMObjectPath(String(name), CIMNamespaceName("root"), CIMName("Lamp"));
    };
    for (const char* good :
         {"a", "atlas", "atlas.example.org", "under_score", "da-sh", "4u", "a:0", "a:65535",
          "a:", "127.0.0.1", "255.255.255.255:80", "[::1]", "[2001:db8::1]:5989", "[fe80::1%lo]"})
        EXPECT_NO_THROW(host(good)) << good;
    for (const char* bad : {" ",
                            "-a",
                            "a.",
                            ".a",
                            "a..b",
                            "a b",
                            "a:65536",
                            "a:x",
                            "a:1:2",
                            "256.0.0.1",
                            "1.2.3",
                            "1.2.3.4.5",
                            "1234",
                            "a.1",
                            "::1",
                            "[::1",
                            "[::1]x",
                            "[1.2.3.4]",
                            "[]",
                            "[fe80::1]",
                            "[fe80::1%no-such-if]",
                            "gr\xc3\xb6\xc3\x9f\x65",
                            "a:99999999999"})
        EXPECT_THROW(host(bad), MalformedObjectNameException) << bad;
}

}  // namespace
