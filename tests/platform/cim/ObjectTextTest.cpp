// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ObjectText.h"

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Error.h"
#include "ObjectSamples.h"

using namespace QZ;
using namespace Pegasus;

namespace {

CIMInstance _with(const CIMValue& value, Uint32 arraySize = 0,
                  const CIMName& referenceClass = CIMName()) {
    CIMInstance instance = fruInstance("39M4");
    instance.addProperty(CIMProperty(CIMName("Extra"), value, arraySize, referenceClass));
    return instance;
}

void _expectKept(const CIMInstance& instance) {
    const std::string text = composeInstance(instance);
    const std::optional<CIMInstance> read = parseInstance(text);
    ASSERT_TRUE(read) << text;
    EXPECT_TRUE(read->identical(instance)) << text;
    EXPECT_EQ(text, composeInstance(*read));
}

template <class T>
void _expectKept(const std::vector<T>& values) {
    Array<T> array;
    for (const T& value : values) {
        _expectKept(_with(CIMValue(value)));
        array.append(value);
    }
    _expectKept(_with(CIMValue(array)));
    _expectKept(_with(CIMValue(array), array.size()));
    _expectKept(_with(CIMValue(Array<T>())));
}

template <class T>
void _expectLimitsKept() {
    using Limits = std::numeric_limits<T>;
    _expectKept(std::vector<T>{Limits::lowest(), T(0), T(1), Limits::max()});
}

}  // namespace

TEST(ObjectText, IsForPeople) {
    CIMInstance instance = fruInstance("39M4", "Fan \"left\"\n");
    Array<Uint8> slots;
    slots.append(1);
    slots.append(2);
    instance.addProperty(CIMProperty(CIMName("Slots"), CIMValue(slots)));
    instance.addProperty(CIMProperty(CIMName("Seen"), CIMValue(CIMTYPE_DATETIME, false)));
    EXPECT_EQ(
        "instance of TAVIRA_FRU {\n"
        "  path TAVIRA_FRU {host \"rack-1\"; namespace \"root/tavqz\"; "
        "key string FRUNumber = \"39M4\"; key string IdentifyingNumber = \"7\"; "
        "key string Vendor = \"Acme\";};\n"
        "  string FRUNumber = \"39M4\";\n"
        "  string IdentifyingNumber = \"7\";\n"
        "  string Vendor = \"Acme\";\n"
        "  string Name = \"Fan \\\"left\\\"\\n\";\n"
        "  uint8 Slots[] = {1, 2};\n"
        "  datetime Seen = null;\n"
        "};\n",
        composeInstance(instance));
}

TEST(ObjectText, KeepsIntegersOfEveryWidth) {
    _expectLimitsKept<Uint8>();
    _expectLimitsKept<Sint8>();
    _expectLimitsKept<Uint16>();
    _expectLimitsKept<Sint16>();
    _expectLimitsKept<Uint32>();
    _expectLimitsKept<Sint32>();
    _expectLimitsKept<Uint64>();
    _expectLimitsKept<Sint64>();
}

TEST(ObjectText, KeepsRealsToTheLastBit) {
    _expectLimitsKept<Real32>();
    _expectLimitsKept<Real64>();
    _expectKept(std::vector<Real32>{0.1F, -1.5e-40F, std::numeric_limits<Real32>::infinity()});
    _expectKept(std::vector<Real64>{0.1, 1.0 / 3, std::numeric_limits<Real64>::denorm_min(),
                                    -std::numeric_limits<Real64>::infinity()});
}

TEST(ObjectText, KeepsWhatIsNoNumber) {
    const auto read = parseInstance(composeInstance(_with(CIMValue(Real64(std::nan(""))))));
    ASSERT_TRUE(read);
    Real64 number = 0;
    read->getProperty(read->findProperty("Extra")).getValue().get(number);
    EXPECT_TRUE(std::isnan(number));
}

TEST(ObjectText, KeepsBooleans) {
    _expectKept(_with(CIMValue(Boolean(true))));
    _expectKept(_with(CIMValue(Boolean(false))));
    Array<Boolean> array;
    array.append(true);
    array.append(false);
    _expectKept(_with(CIMValue(array)));
}

TEST(ObjectText, KeepsCharactersAndTextsOfEveryCodeUnit) {
    for (Uint32 unit = 0; unit < 0x10000; unit += 0x1000) {
        String all;
        for (Uint32 i = 0; i < 0x1000; ++i)
            all.append(Char16(static_cast<Uint16>(unit + i)));
        _expectKept(_with(CIMValue(all)));
    }
    _expectKept(std::vector<Char16>{Char16(0), Char16('"'), Char16(0xD800), Char16(0xFFFF)});
    // A pair, its halves the wrong way round, and one half at the end.
    _expectKept(std::vector<String>{String(), codeUnits({0xD83D, 0xDE00}),
                                    codeUnits({0xDE00, 0xD83D}), codeUnits({'a', 0xD83D})});
}

TEST(ObjectText, KeepsDates) {
    _expectKept(std::vector<CIMDateTime>{CIMDateTime("20270131083000.123456+060"),
                                         CIMDateTime("20270131083000.******-300"),
                                         CIMDateTime("00000365120000.000000:000")});
}

TEST(ObjectText, KeepsReferencesWithEveryKindOfKey) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("A", "a \"b\" \\ ,=\n;}", CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding("B", "TRUE", CIMKeyBinding::BOOLEAN));
    keys.append(CIMKeyBinding("N", "-5", CIMKeyBinding::NUMERIC));
    keys.append(CIMKeyBinding("R", "CIM_B.Key=\"1\"", CIMKeyBinding::REFERENCE));
    keys.append(CIMKeyBinding("S", "5", CIMKeyBinding::STRING));
    const CIMObjectPath full("rack-1", "root/tavqz", "CIM_A", keys);
    const CIMObjectPath hostOnly("rack-1", CIMNamespaceName(), "CIM_A", keys);
    const CIMObjectPath bare(String(), CIMNamespaceName(), "CIM_A");
    for (const CIMObjectPath& path : {full, hostOnly, bare, CIMObjectPath()}) {
        _expectKept(_with(CIMValue(path)));
        _expectKept(_with(CIMValue(path), 0, "CIM_A"));
        if (path.getClassName().isNull())
            continue;  // only a reference may lead nowhere
        CIMInstance instance("CIM_A");
        instance.setPath(path);
        _expectKept(instance);
    }
}

TEST(ObjectText, KeepsInstancesInside) {
    CIMInstance inner = fruInstance("inner", "};\ninstance of X {");
    _expectKept(_with(CIMValue(inner)));
    _expectKept(_with(CIMValue(CIMObject(inner))));
    Array<CIMInstance> array;
    array.append(inner);
    array.append(fruInstance("other"));
    _expectKept(_with(CIMValue(array)));
}

TEST(ObjectText, RefusesWhatItDoesNotHave) {
    CIMInstance nested = fruInstance("0");
    for (int i = 1; i < DeepestInstance; ++i)
        nested = _with(CIMValue(nested));
    _expectKept(nested);
    EXPECT_THROW(composeInstance(_with(CIMValue(nested))), Error);
    EXPECT_THROW(composeInstance(_with(CIMValue(CIMObject(CIMClass("CIM_A"))))), Error);
}

TEST(ObjectText, KeepsNullsOfEveryType) {
    for (int type = CIMTYPE_BOOLEAN; type <= CIMTYPE_INSTANCE; ++type) {
        _expectKept(_with(CIMValue(static_cast<CIMType>(type), false)));
        if (type == CIMTYPE_REFERENCE)
            continue;
        _expectKept(_with(CIMValue(static_cast<CIMType>(type), true)));
        _expectKept(_with(CIMValue(static_cast<CIMType>(type), true, 3), 3));
    }
}

TEST(ObjectText, KeepsNamesThatAreNoAscii) {
    CIMInstance instance(CIMName(codeUnits({'K', 0xE9, 0xD800})));
    instance.addProperty(CIMProperty(CIMName(codeUnits({0x85, 'x'})), CIMValue(Uint8(1))));
    instance.addProperty(CIMProperty(CIMName("of"), CIMValue(Uint8(1))));
    instance.addProperty(CIMProperty(CIMName("null"), CIMValue(Uint8(1))));
    _expectKept(instance);
}

TEST(ObjectText, TakesBlanksAsPeopleWriteThem) {
    const auto read =
        parseInstance("instance  of\tA{path A{ };\r\n\n string  B [ ]={ \"x\" ,\"y\" } ;}\n;\n\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(
        "x y ",
        std::string(read->getProperty(read->findProperty("B")).getValue().toString().getCString()));
}

TEST(ObjectText, RefusesTextThatIsDamagedAnywhere) {
    CIMInstance instance = _with(CIMValue(CIMObjectPath("CIM_A.Key=5")), 0, "CIM_A");
    instance.addProperty(CIMProperty(CIMName("R"), CIMValue(Real32(1.5F))));
    const std::string whole = composeInstance(instance);
    for (std::size_t i = 0; i + 1 < whole.size(); ++i) {
        EXPECT_FALSE(parseInstance(whole.substr(0, i))) << i;
        std::string spoilt = whole;
        spoilt[i] = '\0';
        EXPECT_FALSE(parseInstance(spoilt)) << i;
        spoilt[i] = '\xFF';
        EXPECT_FALSE(parseInstance(spoilt)) << i;
    }
    EXPECT_FALSE(parseInstance(whole + "x"));
}

TEST(ObjectText, RefusesValuesThatDoNotFit) {
    const std::string head = "instance of A { path A {}; ";
    for (const char* const property :
         {"uint8 B = 256;", "sint8 B = -129;", "uint8 B = ;", "uint8 B = 1x;", "uint8 B = \"1\";",
          "boolean B = yes;", "string B = x;", "string B = \"\\u12\";", "string B = \"\\x\";",
          "string B = \"a\tb\";", "datetime B = \"tomorrow\";", "float B = 1;", "string 1B = null;",
          "string B[2] = {\"x\"};", "string B = null; string b = null;", "string B = null",
          "string B[] = {\"x\",};", "reference B = path 5 {};", "string B of CIM_A = null;"}) {
        EXPECT_FALSE(parseInstance(head + property + "};")) << property;
    }
    EXPECT_TRUE(parseInstance(head + "uint8 B = 255;};"));
}
