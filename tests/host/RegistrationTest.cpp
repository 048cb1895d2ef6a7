// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Registration.h"

#include <gmock/gmock.h>

#include "MofParser.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

constexpr const char* _module = R"(instance of PG_ProviderModule { Name = "M"; Location = "L"; };)";
constexpr const char* _provider =
    R"(instance of PG_Provider { ProviderModuleName = "M"; Name = "P"; };)";

std::string _capability(const std::string& className, const std::string& types) {
    return "instance of PG_ProviderCapabilities { ProviderModuleName = \"M\"; ProviderName = \"P\";"
           " ClassName = \"" +
           className + "\"; Namespaces = {\"root/a\", \"root/b\"}; ProviderType = {" + types +
           "}; };";
}

Registration _read(const std::string& text) {
    Registration registration;
    registration.add(parseMof(text, "f.mof"));
    return registration;
}

std::string _refusal(const std::string& text) {
    try {
        _read(text);
    } catch (const MofError& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace

TEST(Registration, FindsWhoServesAClassInANamespace) {
    const Registration registration =
        _read(std::string(_module) + _provider + _capability("C", "2") + _capability("E", "4"));
    const ProviderEntry* entry = registration.instanceProvider("ROOT/b", "c");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->module, "M");
    EXPECT_EQ(entry->location, "L");
    EXPECT_EQ(entry->name, "P");
    EXPECT_EQ(registration.instanceProvider("root/c", "C"), nullptr);
    EXPECT_EQ(registration.instanceProvider("root/a", "D"), nullptr);
    EXPECT_EQ(registration.instanceProvider("root/a", "E"), nullptr) << "serves indications only";
}

TEST(Registration, FindsWhoSendsTheIndicationsOfAClass) {
    const Registration registration =
        _read(std::string(_module) + _provider + _capability("C", "2") + _capability("E", "4") +
              _capability("Both", "2, 4"));
    EXPECT_EQ(registration.indicationProvider("root/a", "e")->name, "P");
    EXPECT_EQ(registration.indicationProvider("root/a", "Both")->name, "P");
    EXPECT_EQ(registration.instanceProvider("root/a", "Both")->name, "P");
    EXPECT_EQ(registration.indicationProvider("root/a", "C"), nullptr);
    EXPECT_EQ(registration.indicationProvider("root/c", "E"), nullptr);
}

TEST(Registration, TakesWhatAnotherServerHas) {
    Registration registration = _read(std::string(_module) + _provider + _capability("C", "2"));
    registration.add({"N", "", "Q"}, "root/b", "D");
    EXPECT_EQ(registration.instanceProvider("root/B", "d")->name, "Q");
    EXPECT_EQ(registration.instanceProvider("root/a", "D"), nullptr);
    EXPECT_EQ(registration.instanceProvider("root/b", "C")->name, "P");
    EXPECT_EQ(registration.indicationProvider("root/b", "D"), nullptr);
}

TEST(Registration, RefusesWhatRefersToNothing) {
    EXPECT_THAT(_refusal(_provider), HasSubstr("module \"M\" is not registered"));
    EXPECT_THAT(_refusal(std::string(_module) + _capability("C", "2")),
                HasSubstr("provider \"P\" of module \"M\" is not registered"));
}

TEST(Registration, RefusesWhatIsMissingOrOfTheWrongType) {
    EXPECT_THAT(_refusal("instance of PG_ProviderModule { Name = \"M\"; };"),
                HasSubstr("1:13: an instance of PG_ProviderModule needs Location"));
    EXPECT_THAT(_refusal("instance of PG_ProviderModule { Name = 1; Location = \"L\"; };"),
                HasSubstr("1:40: a string expected"));
    EXPECT_THAT(
        _refusal("instance of PG_ProviderModule { Name = \"M\"; Location = \"../evil\"; };"),
        HasSubstr("without a folder"));
}
