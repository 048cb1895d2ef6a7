// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Model.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "ModelFolder.h"
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
    EXPECT_EQ(model.instanceProvider("root/tavqz", "A")->name, entry->name);
}

TEST(Model, ReadsTheRegistrationNoFurtherThanIsAskedFor) {
    TemporaryFolder folder;
    folder.write("a.mof", REGISTRATION + std::string("instance of PG_Provider { Name = 7; };"));
    folder.write("b.mof", REGISTRATION_OF_B);
    const Model model(folder.path());
    const ProviderEntry* const entry = model.instanceProvider("root/tavqz", "A");
    ASSERT_TRUE(entry);
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW(model.instanceProvider("root/tavqz", "B"), MofError);
        EXPECT_EQ(model.instanceProvider("root/tavqz", "A"), entry);
    }
    EXPECT_EQ(entry->name, "P");
}

TEST(Model, GoesThroughAllFilesForAClass) {
    TemporaryFolder folder;
    folder.write("a.mof", REGISTRATION);
    folder.write("b.mof", "class B { no MOF");
    folder.write("c.mof", REGISTRATION_OF_B);
    const Model model(folder.path());
    const ProviderEntry* const entry = model.instanceProvider("root/tavqz", "B");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "Q");
    EXPECT_FALSE(model.instanceProvider("root/tavqz", "C"));
    EXPECT_FALSE(model.instanceProvider("root/tavqz", "C"));
    EXPECT_EQ(model.instanceProvider("root/tavqz", "B"), entry);
    EXPECT_EQ(model.instanceProvider("root/tavqz", "A")->name, "P");
}

TEST(Model, AsksItsFilesNoMoreOnceItIsRead) {
    TemporaryFolder folder;
    folder.write("a.mof", std::string("class A {}; class B {};") + REGISTRATION);
    folder.write("b.mof", REGISTRATION_OF_B);
    const Model model(folder.path());
    EXPECT_TRUE(model.schema().classes.find("A"));
    folder.write("a.mof", "class");
    folder.write("b.mof", "class");
    EXPECT_TRUE(model.instanceProvider("root/tavqz", "A"));
    EXPECT_TRUE(model.instanceProvider("root/tavqz", "B"));
    EXPECT_FALSE(model.instanceProvider("root/tavqz", "C"));
}

TEST(Model, AnswersManyThreads) {
    TemporaryFolder folder;
    folder.write("a.mof", REGISTRATION);
    folder.write("b.mof", REGISTRATION_OF_B);
    const Model model(folder.path());
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&model, i] {
            const bool isA = i % 2 == 0;
            const ProviderEntry* const entry =
                model.instanceProvider("root/tavqz", isA ? "A" : "B");
            ASSERT_TRUE(entry);
            EXPECT_EQ(entry->name, isA ? "P" : "Q");
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ModelFolder, HasTheMofFilesInTheOrderOfTheirNames) {
    TemporaryFolder folder;
    EXPECT_THROW(modelFiles(folder.path()), Error);
    EXPECT_THROW(modelFiles(folder.file("none")), Error);
    for (const char* const name : {"b.mof", "a.mof", ".mof", "c.mof.bak", "mof"}) {
        folder.write(name, "");
    }
    EXPECT_EQ(modelFiles(folder.path()),
              (std::vector<std::string>{folder.file("a.mof"), folder.file("b.mof")}));
    EXPECT_TRUE(innerModelFiles(folder.path(), "none").empty());
    EXPECT_THROW(innerModelFiles(folder.path(), "a.mof"), Error) << "no folder";
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
