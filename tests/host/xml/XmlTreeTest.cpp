// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlTree.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace QZ {
namespace {

XmlElement _parse(const std::string& text) {
    return parseXml(text, XmlLimits());
}

std::string _repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

const std::string DOCTYPE = "<!DOCTYPE CIM SYSTEM \"cim.dtd\">";

}  // namespace

TEST(XmlTree, ReadsElementsAttributesAndText) {
    const XmlElement root = _parse("<a x='1&amp;2'>one<b/><![CDATA[<&x;>]]>&#233;</a>");
    EXPECT_EQ(root.name, "a");
    EXPECT_EQ(*root.attribute("x"), "1&2");
    EXPECT_EQ(root.attribute("y"), nullptr);
    EXPECT_EQ(root.text, "one<&x;>\xC3\xA9");
    EXPECT_NE(root.child("b"), nullptr);
}

TEST(XmlTree, TakesNoEntitiesButXmlsOwn) {
    EXPECT_THROW(_parse("<a>&nbsp;</a>"), XmlError);
    EXPECT_THROW(_parse("<a x='&nbsp;'/>"), XmlError);
    EXPECT_THROW(_parse(DOCTYPE + "<a>&nbsp;</a>"), XmlError);
    EXPECT_THROW(_parse(DOCTYPE + "<a x='&nbsp;'/>"), XmlError);
    EXPECT_THROW(_parse("<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"), XmlError);
    EXPECT_EQ(_parse(DOCTYPE + "<!-- &x; --><a x='&lt;'>&amp;<![CDATA[&x;]]>&#65;</a>").text,
              "&&x;A");
}

TEST(XmlTree, TakesAnythingForTheNameOfADocumentType) {
    EXPECT_EQ(_parse("<!DOCTYPE CIM SYSTEM \"http://a/?b&c;>'\"><a>&amp;</a>").text, "&");
    EXPECT_THROW(_parse("<!DOCTYPE CIM SYSTEM \"a&b\"><a>&nbsp;</a>"), XmlError);
    EXPECT_THROW(_parse("<!DOCTYPE CIM SYSTEM \"a&b\"><a x='&nbsp;'/>"), XmlError);
}

TEST(XmlTree, TakesXmlOfOneVersion) {
    EXPECT_NO_THROW(_parse("<?xml version='1.0'?><a/>"));
    EXPECT_THROW(_parse("<?xml version='1.1'?><a/>"), XmlError);
}

TEST(XmlTree, RefusesAnEntityBomb) {
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'ha'>";
    for (int i = 1; i < 30; ++i) {
        const std::string last = "&e" + std::to_string(i - 1) + ";";
        bomb.append("<!ENTITY e").append(std::to_string(i));
        bomb.append(" '").append(last).append(last).append("'>");
    }
    EXPECT_THROW(_parse(bomb + "]><a>&e29;</a>"), XmlError);
}

TEST(XmlTree, BoundsDepthAndNumber) {
    EXPECT_NO_THROW(_parse(_repeated("<a>", 64) + _repeated("</a>", 64)));
    EXPECT_THROW(_parse(_repeated("<a>", 65) + _repeated("</a>", 65)), XmlError);
    EXPECT_THROW(_parse(_repeated("<a>", 100'000) + _repeated("</a>", 100'000)), XmlError);
    const XmlLimits few{64, 4};
    EXPECT_NO_THROW(parseXml("<a><b x=''/><c/></a>", few));
    EXPECT_THROW(parseXml("<a><b x='' y=''/><c/></a>", few), XmlError);
}

TEST(XmlTree, ReadsUtf8AndAsciiOnly) {
    EXPECT_NO_THROW(_parse("\xEF\xBB\xBF<a/>"));
    EXPECT_NO_THROW(_parse("<?xml version='1.0' encoding='utf-8'?><a/>"));
    EXPECT_NO_THROW(_parse("<?xml version='1.0' encoding='US-ASCII'?><a/>"));
    EXPECT_THROW(_parse("<?xml version='1.0' encoding='ISO-8859-1'?><a/>"), XmlError);
    EXPECT_THROW(_parse("<a>\xE9</a>"), XmlError);
    const std::string little("<\0a\0/\0>\0", 8);
    const std::string big("\0<\0a\0/\0>", 8);
    EXPECT_THROW(_parse(little), XmlError);
    EXPECT_THROW(_parse(big), XmlError);
    EXPECT_THROW(_parse("\xFF\xFE" + little), XmlError);
    EXPECT_THROW(_parse("\xFE\xFF" + big), XmlError);
}

TEST(XmlTree, RefusesWhatIsNotWellFormed) {
    for (const char* text : {"", "a", "<a>", "<a></b>", "<a/><a/>", "<a x='' x=''/>", "<a>\x01</a>",
                             "<a>]]></a>", "<a>&#0;</a>", "<a/>text"}) {
        EXPECT_THROW(_parse(text), XmlError) << text;
    }
}

TEST(XmlTree, ReadsWhatIsLargeAsWhatIsSmall) {
    const std::string value(100'000, 'v');
    const std::string text = _repeated("0123456789\n", 20'000);
    std::string document = "<a x='" + value + "'>" + text;
    for (int i = 0; i < 5'000; ++i) {
        const std::string number = std::to_string(i);
        document.append("<n").append(number).append(" a").append(number).append("='");
        document.append(number).append("'>").append(number).append("</n").append(number) += '>';
    }
    document += "</a>";
    const XmlElement root = _parse(document);
    EXPECT_EQ(*root.attribute("x"), value);
    EXPECT_EQ(root.text, text);
    ASSERT_EQ(root.children.size(), 5'000U);
    for (int i = 0; i < 5'000; ++i) {
        const XmlElement& child = root.children[std::size_t(i)];
        const std::string number = std::to_string(i);
        ASSERT_EQ(child.name, "n" + number);
        ASSERT_EQ(*child.attribute("a" + number), number);
        ASSERT_EQ(child.text, number);
    }
}

TEST(XmlTree, ReadsManyDocumentsOnManyThreads) {
    std::vector<std::thread> threads;
    threads.reserve(4);
    std::atomic<int> read{0};
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([thread, &read] {
            for (int i = 0; i < 500; ++i) {
                const std::string name = "n" + std::to_string(1'000 * thread + i);
                std::string element = "<";
                element.append(name).append(" x='").append(name).append("'/>");
                const std::string text = _repeated(element, 1 + i % 300);
                const std::string open = "<a>" + text;
                const XmlElement root = _parse(open + "</a>");
                EXPECT_THROW(_parse(open), XmlError);
                for (const XmlElement& child : root.children) {
                    read += child.name == name && *child.attribute("x") == name ? 1 : 0;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    int expected = 0;
    for (int i = 0; i < 500; ++i) {
        expected += 4 * (1 + i % 300);
    }
    EXPECT_EQ(read, expected);
}

}  // namespace QZ
