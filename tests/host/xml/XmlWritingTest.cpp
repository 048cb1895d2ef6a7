// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlWriting.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "CimResponseWriter.h"

namespace QZ {

using namespace Pegasus;

TEST(XmlWriting, TellsTheTypeOfKeysWhereItIsKnown) {
    std::string xml;
    appendInstanceName(xml, CIMObjectPath("A.B=true,D=\"20270131000000.000000+060\",N=1,S=\"x\""));
    EXPECT_NE(xml.find("<KEYVALUE VALUETYPE=\"boolean\" TYPE=\"boolean\">TRUE<"), xml.npos) << xml;
    EXPECT_NE(xml.find("<KEYVALUE VALUETYPE=\"string\">2027"), xml.npos) << xml;
    EXPECT_NE(xml.find("<KEYVALUE VALUETYPE=\"numeric\">1<"), xml.npos) << xml;
    EXPECT_NE(xml.find("<KEYVALUE VALUETYPE=\"string\" TYPE=\"string\">x<"), xml.npos) << xml;
}

TEST(XmlWriting, TellsWhatIsInheritedOfInstancesOnlyWhenAsked) {
    CIMInstance instance(CIMName("A"));
    instance.addProperty(
        CIMProperty(CIMName("P"), CIMValue(Uint8(1)), 0, CIMName(), CIMName("B"), true));
    std::string plain;
    appendInstance(plain, instance, XmlForm());
    EXPECT_EQ(plain.find("PROPAGATED"), plain.npos);
    XmlForm form;
    form.includeClassOrigin = true;
    std::string asked;
    appendInstance(asked, instance, form);
    EXPECT_NE(asked.find("CLASSORIGIN=\"B\" PROPAGATED=\"true\""), asked.npos) << asked;
}

TEST(XmlWriting, GivesFullPathsAHostAndANamespace) {
    std::string xml;
    appendFullInstancePath(xml, CIMObjectPath("root/tavqz:A.K=1"));
    EXPECT_EQ(xml.find("<INSTANCEPATH><NAMESPACEPATH><HOST>localhost</HOST>"), 0U) << xml;
    EXPECT_THROW(appendFullInstancePath(xml, CIMObjectPath("A.K=1")), std::logic_error);
}

TEST(XmlWriting, KeepsAnEmptyReturnValue) {
    std::string text;
    CimResponseWriter writer({"7", "EnumerateInstances"},
                             [&](std::string_view bytes) { text += bytes; });
    writer.returns();
    writer.end();
    EXPECT_NE(text.find("<IRETURNVALUE></IRETURNVALUE>"), text.npos);
}

}  // namespace QZ
