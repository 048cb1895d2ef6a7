// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimObjectFile.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "CimText.h"
#include "Error.h"
#include "ManualClock.h"
#include "ObjectSamples.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;
using namespace Pegasus;
using testing::AnyOf;

namespace {

// 2027-01-31T06:50:00+01:00
constexpr std::int64_t Moment = 1801374600;
constexpr const char* Aside = "fru.dat.damaged-20270131T065000";

class CimObjectFileTest : public testing::Test {
protected:
    std::vector<CIMInstance> stored(const char* className = "TAVIRA_FRU") {
        CimObjectFile reader{make_wstring(folder.file("fru.dat"))};
        reader.open(1);
        return reader.enumerateInstances(
            CIMObjectPath(String(), CIMNamespaceName(), CIMName(className)));
    }

    // The FRU numbers of what is stored.
    std::string numbers() {
        std::string text;
        for (const CIMInstance& instance : stored()) {
            text += make_string(instance.getProperty(0).getValue().toString());
            text += ' ';
        }
        return text;
    }

    template <class Change>
    void change(Change change) {
        file.open(3);
        change();
        file.close();
    }

    // Some file systems flush a file that is truncated before it is written.
    void replace(const std::string& text) const {
        std::filesystem::remove(folder.file("fru.dat"));
        folder.write("fru.dat", text);
    }

    void create(const CIMInstance& instance) {
        change([&] { file.createInstance(instance); });
    }

    template <class Change>
    std::string refusal(CIMStatusCode status, Change refused) {
        file.open(3);
        try {
            refused();
        } catch (const CIMException& exception) {
            EXPECT_EQ(status, exception.getCode());
            return make_string(exception.getMessage());
        }
        ADD_FAILURE() << "not refused";
        return {};
    }

    const TemporaryFolder folder;
    const ScopedEnvironment zone{"TZ", "CET-1"};
    const ManualClock clock{Moment};
    CimObjectFile file{make_wstring(folder.file("fru.dat"))};
};

}  // namespace

TEST_F(CimObjectFileTest, KeepsInstancesWithTheirPathsInOrder) {
    create(fruInstance("2"));
    create(fruInstance("1"));
    const std::vector<CIMInstance> found = stored();
    ASSERT_EQ(2U, found.size());
    EXPECT_TRUE(found[0].identical(fruInstance("2")));
    EXPECT_TRUE(found[1].identical(fruInstance("1")));
}

TEST_F(CimObjectFileTest, AnswersTheClassThatIsAskedForIgnoringCase) {
    create(fruInstance("1"));
    EXPECT_EQ(1U, stored("tavira_fru").size());
    EXPECT_EQ(0U, stored("TAVIRA_Other").size());
}

TEST_F(CimObjectFileTest, SavesNothingOfWhatIsDoneToInstancesThatItHandedOut) {
    create(fruInstance("1"));
    CIMInstance first;
    change([&] {
        first = file.enumerateInstances(CIMObjectPath("TAVIRA_FRU"))[0];
        first.removeProperty(3);
        file.createInstance(fruInstance("2"));
    });
    EXPECT_TRUE(stored()[0].identical(fruInstance("1")));
    EXPECT_EQ(3U, first.getPropertyCount());
}

TEST_F(CimObjectFileTest, ReplacesAnInstanceInItsPlace) {
    create(fruInstance("1"));
    create(fruInstance("2"));
    change([&] { file.modifyInstance(fruInstance("1", "Pump")); });
    EXPECT_EQ("1 2 ", numbers());
    EXPECT_TRUE(stored()[0].identical(fruInstance("1", "Pump")));
}

TEST_F(CimObjectFileTest, DeletesTheInstanceThatThePathNames) {
    create(fruInstance("1"));
    create(fruInstance("2"));
    CIMObjectPath path = fruInstance("1").getPath();
    path.setHost("other-host");
    path.setNameSpace(CIMNamespaceName());
    change([&] { file.deleteInstance(path); });
    EXPECT_EQ("2 ", numbers());
}

TEST_F(CimObjectFileTest, RefusesASecondInstanceOfTheSameKeys) {
    create(fruInstance("1"));
    CIMInstance again = fruInstance("1", "Pump");
    CIMObjectPath path = again.getPath();
    path.setHost("other-host");
    again.setPath(path);
    EXPECT_EQ("TAVIRA_FRU.FRUNumber=\"1\",IdentifyingNumber=\"7\",Vendor=\"Acme\" exists already",
              refusal(CIM_ERR_ALREADY_EXISTS, [&] { file.createInstance(again); }));
    file.close();
    EXPECT_TRUE(stored()[0].identical(fruInstance("1")));
}

TEST_F(CimObjectFileTest, RefusesToChangeWhatIsNotStored) {
    create(fruInstance("1"));
    const std::string message =
        "TAVIRA_FRU.FRUNumber=\"2\",IdentifyingNumber=\"7\",Vendor=\"Acme\" is not stored";
    EXPECT_EQ(message, refusal(CIM_ERR_NOT_FOUND, [&] { file.modifyInstance(fruInstance("2")); }));
    EXPECT_EQ(message,
              refusal(CIM_ERR_NOT_FOUND, [&] { file.deleteInstance(fruInstance("2").getPath()); }));
}

TEST_F(CimObjectFileTest, TellsKeysApartByCase) {
    create(fruInstance("a"));
    create(fruInstance("A"));
    EXPECT_EQ("a A ", numbers());
}

TEST_F(CimObjectFileTest, RefusesAnInstanceWithoutAKeyProperty) {
    CIMInstance instance = fruInstance("1");
    instance.removeProperty(instance.findProperty("Vendor"));
    instance.getProperty(0).setValue(CIMValue(CIMTYPE_STRING, false));
    const auto create = [&] { file.createInstance(instance); };
    const auto modify = [&] { file.modifyInstance(instance); };
    const std::string message = "TAVIRA_FRU has no value for FRUNumber, Vendor";
    EXPECT_EQ(message, refusal(CIM_ERR_INVALID_PARAMETER, create));
    EXPECT_EQ(message, refusal(CIM_ERR_INVALID_PARAMETER, modify));
    instance.setPath(CIMObjectPath("TAVIRA_FRU"));
    EXPECT_EQ("TAVIRA_FRU has no value for any key", refusal(CIM_ERR_INVALID_PARAMETER, create));
}

TEST_F(CimObjectFileTest, KeepsKeysOfAnyCharacter) {
    const String keys[] = {String(),
                           "\"};\ninstance of X {",
                           "a\\\"b,Vendor=\"x\"",
                           "//not a comment",
                           codeUnits({0, 0xD800, 0xFFFF, '\r', 0x2028}),
                           codeUnits({0xE4, 0xD83D, 0xDE00})};
    for (const String& key : keys)
        create(fruInstance(key, "Fan", key));
    std::vector<CIMInstance> found = stored();
    ASSERT_EQ(std::size(keys), found.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_TRUE(found[i].identical(fruInstance(keys[i], "Fan", keys[i]))) << i;
    for (const String& key : keys)
        change([&] { file.deleteInstance(fruInstance(key, "Fan", key).getPath()); });
    EXPECT_TRUE(stored().empty());
}

TEST_F(CimObjectFileTest, RefusesWhatItIsNotOpenFor) {
    EXPECT_THROW(file.enumerateInstances(CIMObjectPath("A")), Error);
    file.open(1);
    EXPECT_THROW(file.createInstance(fruInstance("1")), Error);
    EXPECT_THROW(file.modifyInstance(fruInstance("1")), Error);
    EXPECT_THROW(file.deleteInstance(fruInstance("1").getPath()), Error);
}

TEST_F(CimObjectFileTest, LeavesWhatWasWrittenByHandAsItIs) {
    const std::string first =
        "// The left one squeaks.\n\n"
        "instance of TAVIRA_FRU {\n\tpath TAVIRA_FRU { key string FRUNumber=\"1\"; };\n"
        "  string FRUNumber  = \"1\" ;\n};";
    folder.write("fru.dat", first);
    create(fruInstance("2"));
    EXPECT_EQ(0U, folder.read("fru.dat").find(first + "\ninstance of"));
    EXPECT_EQ("1 2 ", numbers());
    EXPECT_FALSE(folder.contains(Aside));
}

TEST_F(CimObjectFileTest, LoadsWhatIsSoundWhereverItIsTorn) {
    for (const char* const number : {"1", "2", "3"})
        create(fruInstance(number));
    const std::string whole = folder.read("fru.dat");
    for (std::size_t i = 0; i < whole.size(); ++i) {
        replace(whole.substr(0, i));
        // The end of the last line is not missed.
        EXPECT_EQ(std::string("1 2 3 ").substr(0, 2 * (3 * (i + 1) / whole.size())), numbers())
            << i;
    }
}

TEST_F(CimObjectFileTest, LoadsWhatIsSoundAroundAnyDamage) {
    for (const char* const number : {"1", "2", "3"})
        create(fruInstance(number));
    const std::string whole = folder.read("fru.dat");
    const std::size_t third = whole.size() / 3;
    for (std::size_t i = third; i + 1 < 2 * third; ++i) {
        for (const char damage : {'\0', '\xFF'}) {
            std::string spoilt = whole;
            spoilt[i] = damage;
            replace(spoilt);
            EXPECT_EQ("1 3 ", numbers()) << spoilt;
        }
        // A line that is broken may still be one.
        replace(std::string(whole).insert(i, "\n"));
        EXPECT_THAT(numbers(), AnyOf("1 3 ", "1 2 3 "));
    }
}

TEST_F(CimObjectFileTest, TakesAnInstanceWithoutItsKeysForDamaged) {
    create(fruInstance("1"));
    std::string spoilt = folder.read("fru.dat");
    spoilt.replace(spoilt.find("key string Vendor") + 11, 6, "Vend  ");
    folder.write("fru.dat", spoilt);
    EXPECT_EQ("", numbers());
}

TEST_F(CimObjectFileTest, KeepsADamagedFileBesideTheNewOne) {
    create(fruInstance("1"));
    const std::string torn = folder.read("fru.dat") + "instance of TAVIRA_FRU {\n  pa";
    folder.write("fru.dat", torn);
    EXPECT_EQ("1 ", numbers());
    EXPECT_FALSE(folder.contains(Aside));
    create(fruInstance("2"));
    EXPECT_EQ("1 2 ", numbers());
    EXPECT_EQ(torn, folder.read(Aside));
    EXPECT_FALSE(folder.contains(std::string(Aside) + "-2"));
    create(fruInstance("3"));
    EXPECT_FALSE(folder.contains(std::string(Aside) + "-2"));
}

TEST_F(CimObjectFileTest, TakesBlankLinesCommentsAndAMarkOfByteOrder) {
    const std::string whole =
        "\xEF\xBB\xBF// Mended by hand.\n\n  // Twice.\n"
        "instance of TAVIRA_FRU {\n\n  path TAVIRA_FRU {key string FRUNumber = \"1\";};\n"
        "// at the margin\n  string FRUNumber = \"1\";\n\r\n \t\n  // inside\n};\n";
    replace(whole);
    EXPECT_EQ("1 ", numbers());
    create(fruInstance("2"));
    EXPECT_EQ("1 2 ", numbers());
    EXPECT_EQ(0U, folder.read("fru.dat").find(whole + "instance of"));
    EXPECT_FALSE(folder.contains(Aside));
}

TEST_F(CimObjectFileTest, KeepsTheCommentAboveAnInstanceWhenTheOneBeforeIsTorn) {
    create(fruInstance("2"));
    const std::string second = "// The left one.\n\n" + folder.read("fru.dat");
    replace("// Lost.\ninstance of TAVIRA_FRU {\n  pa\n" + second);
    EXPECT_EQ("2 ", numbers());
    create(fruInstance("3"));
    EXPECT_EQ(0U, folder.read("fru.dat").find("// Lost.\n" + second));
    EXPECT_TRUE(folder.contains(Aside));
}

TEST_F(CimObjectFileTest, KnowsAnInstanceByItsPropertiesWhereItsPathHasOtherKeys) {
    create(fruInstance("1"));
    std::string text = folder.read("fru.dat");
    const std::string property = "\n  string FRUNumber = \"1\"";
    text.replace(text.find(property), property.size(), "\n  string FRUNumber = \"9\"");
    replace(text);
    const CIMInstance found = stored().at(0);
    EXPECT_EQ(CIMObjectPath("TAVIRA_FRU.FRUNumber=\"9\",IdentifyingNumber=\"7\",Vendor=\"Acme\"")
                  .toString(),
              CIMObjectPath(String(), CIMNamespaceName(), found.getClassName(),
                            found.getPath().getKeyBindings())
                  .toString());
    EXPECT_EQ("root/tavqz", make_string(found.getPath().getNameSpace().getString()));
    change([&] { file.modifyInstance(fruInstance("9", "Pump")); });
    EXPECT_TRUE(stored()[0].identical(fruInstance("9", "Pump")));
    EXPECT_FALSE(folder.contains(Aside));
    replace(text);
    change([&] { file.deleteInstance(fruInstance("9").getPath()); });
    EXPECT_EQ("", numbers());
}

TEST_F(CimObjectFileTest, TakesASecondInstanceOfTheSameKeysForDamaged) {
    create(fruInstance("1"));
    const std::string first = folder.read("fru.dat");
    std::string second = first;
    second.replace(second.find("\"Fan\""), 5, "\"Pump\"");
    second.replace(second.find("path TAVIRA_FRU"), 15, "path tavira_fru");
    replace(first + second);
    ASSERT_EQ(1U, stored().size());
    EXPECT_TRUE(stored()[0].identical(fruInstance("1")));
    change([&] { file.deleteInstance(fruInstance("1").getPath()); });
    EXPECT_EQ("", numbers());
    EXPECT_EQ(first + second, folder.read(Aside));
}
