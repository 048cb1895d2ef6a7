// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Model.h"

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

using namespace QZ;

namespace {

constexpr const char* REGISTRATION =
    "instance of pg_providermodule { Name = \"M\"; Location = \"L\"; };"
    "instance of PG_Provider { ProviderModuleName = \"M\"; Name = \"P\"; };"
    "instance of PG_ProviderCapabilities { ProviderModuleName = \"M\"; ProviderName = \"P\"; "
    "ClassName = \"A\"; Namespaces = {\"root/tavqz\"}; ProviderType = {2}; };";

constexpr const char* REGISTRATION_OF_B =
    "// Another module's.\n#pragma locale (\"en_US\")\n"
    "instance of PG_ProviderModule { Name = \"N\"; Location = \"L\"; };"
    "instance of PG_Provider { ProviderModuleName = \"N\"; Name = \"Q\"; };"
    "instance of PG_ProviderCapabilities { ProviderModuleName = \"N\"; ProviderName = \"Q\"; "
    "ClassName = \"B\"; Namespaces = {\"root/tavqz\"}; ProviderType = {2}; };";

TEST(Model, ReadsTheRegistrationWithoutTheClasses) {
    TemporaryFolder folder;
    folder.write("a.mof", "class A { no MOF");
    folder.write("b.mof", REGISTRATION);
    const Model model(folder.path());
    const ProviderEntry* entry = model.instanceProvider("root/tavqz", "a");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "P");
    EXPECT_THROW(model.schema(), MofError);
}

TEST(Model, ReadsTheClassesWhenTheyAreAskedForAndOnlyOnce) {
    TemporaryFolder folder;
    const Model model(folder.path());
    EXPECT_THROW(model.instanceProvider("root/tavqz", "A"), Error) << "no file yet";
    EXPECT_THROW(model.schema(), Error);
    folder.write("a.mof", "class A {};");
    folder.write("b.mof", REGISTRATION);
    const ProviderEntry* entry = model.instanceProvider("root/tavqz", "A");
    EXPECT_TRUE(model.schema().classes.find("A"));
    folder.write("a.mof", "class");
    EXPECT_TRUE(model.schema().classes.find("A"));
    EXPECT_EQ(model.instanceProvider("root/tavqz", "A"), entry);
}

TEST(Model, ReadsTheRegistrationNoFurtherThanIsAskedFor) {
    TemporaryFolder folder;
    folder.write("a.mof", REGISTRATION + std::string("instance of PG_Provider { Name = 7; };"));
    folder.write("b.mof", REGISTRATION_OF_B);
    const Model model(folder.path());
    const ProviderEntry* const entry = model.instanceProvider("root/tavqz", "A");
    ASSERT_TRUE(entry);
    EXPECT_THROW(model.instanceProvider("root/tavqz", "B"), MofError);
    EXPECT_THROW(model.instanceProvider("root/tavqz", "B"), MofError) << "forgotten";
    folder.write("a.mof", REGISTRATION);
    ASSERT_TRUE(model.instanceProvider("root/tavqz", "B"));
    EXPECT_EQ(model.instanceProvider("root/tavqz", "B")->name, "Q");
    EXPECT_FALSE(model.instanceProvider("root/tavqz", "C"));
    EXPECT_FALSE(model.instanceProvider("root/tavqz", "C"));
    EXPECT_EQ(model.instanceProvider("root/tavqz", "A"), entry);
    EXPECT_EQ(entry->name, "P");
}

TEST(Model, TakesASchemaAsItIs) {
    TemporaryFolder folder;
    folder.write("a.mof", "class A {};");
    folder.write("b.mof", REGISTRATION);
    const Model model(Schema::load(folder.path()));
    EXPECT_TRUE(model.schema().classes.find("A"));
    EXPECT_TRUE(model.instanceProvider("root/tavqz", "A"));
}

}  // namespace
