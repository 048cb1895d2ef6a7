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

TEST(Model, ReadsTheRegistrationWithoutTheClasses) {
    TemporaryFolder folder;
    folder.write("a.mof", "class A { no MOF");
    folder.write("b.mof", REGISTRATION);
    const Model model(folder.path());
    const ProviderEntry* entry = model.registration().instanceProvider("root/tavqz", "a");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "P");
    EXPECT_THROW(model.schema(), MofError);
}

TEST(Model, ReadsTheClassesWhenTheyAreAskedForAndOnlyOnce) {
    TemporaryFolder folder;
    const Model model(folder.path());
    EXPECT_THROW(model.registration(), Error) << "no file yet";
    EXPECT_THROW(model.schema(), Error);
    folder.write("a.mof", "class A {};");
    folder.write("b.mof", REGISTRATION);
    const ProviderEntry* entry = model.registration().instanceProvider("root/tavqz", "A");
    EXPECT_TRUE(model.schema().classes.find("A"));
    folder.write("a.mof", "class");
    EXPECT_TRUE(model.schema().classes.find("A"));
    EXPECT_EQ(model.registration().instanceProvider("root/tavqz", "A"), entry);
}

TEST(Model, TakesASchemaAsItIs) {
    TemporaryFolder folder;
    folder.write("a.mof", "class A {};");
    folder.write("b.mof", REGISTRATION);
    const Model model(Schema::load(folder.path()));
    EXPECT_TRUE(model.schema().classes.find("A"));
    EXPECT_TRUE(model.registration().instanceProvider("root/tavqz", "A"));
}

}  // namespace
