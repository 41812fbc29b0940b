#include <gtest/gtest.h>

#include <cstring>

#include "support/TestSupport.h"
#include "xml/ZrXml.h"

namespace {

const char kXsd[] = R"(<?xml version="1.0"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" targetNamespace="urn:test"
           xmlns:t="urn:test" elementFormDefault="qualified" attributeFormDefault="qualified">
  <xs:element name="root">
    <xs:complexType>
      <xs:sequence>
        <xs:element name="item" maxOccurs="unbounded">
          <xs:complexType>
            <xs:attribute name="n" use="required">
              <xs:simpleType><xs:restriction base="xs:integer">
                <xs:minInclusive value="0"/><xs:maxInclusive value="9"/>
              </xs:restriction></xs:simpleType>
            </xs:attribute>
          </xs:complexType>
        </xs:element>
      </xs:sequence>
      <xs:attribute name="name" type="xs:string" use="required"/>
    </xs:complexType>
  </xs:element>
</xs:schema>)";

const zr_xml::Schema& schema() { return zr_xml::schemaFor("test", kXsd, std::strlen(kXsd)); }

int failureLine(const std::string& doc) {
  try {
    zr_xml::Document::parseMemory(doc, "t.xml", schema());
  } catch (const HXMLException& e) {
    return e.getLineNumber();
  }
  return -1;
}

}  // namespace

TEST(ZrXml, ValidDocumentIsNavigable) {
  const auto doc = zr_xml::Document::parseMemory(
      "<t:root xmlns:t=\"urn:test\" t:name=\"r\">\n<t:item t:n=\" 3 \"/><t:item t:n=\"4\"/></t:root>",
      "t.xml", schema());
  const auto root = doc.root();
  EXPECT_EQ(root.name(), "root");
  EXPECT_EQ(root.nsUri(), "urn:test");
  EXPECT_EQ(root.attr("name"), "r");
  EXPECT_FALSE(root.hasAttr("other"));
  ASSERT_EQ(root.children("item").size(), 2u);
  EXPECT_EQ(root.child("item").attr("n"), " 3 ");
  EXPECT_EQ(root.child("item").line(), 2);
  EXPECT_FALSE(root.child("missing"));
}

TEST(ZrXml, EveryViolationKindFailsWithItsLine) {
  const std::string head = "<t:root xmlns:t=\"urn:test\" t:name=\"r\">\n";
  EXPECT_EQ(failureLine(head + "<t:item t:n=\"1\">\n</t:root>"), 3);             // not well-formed
  EXPECT_EQ(failureLine(head + "<t:item/>\n</t:root>"), 2);                      // missing attribute
  EXPECT_EQ(failureLine(head + "<t:item t:n=\"x\"/>\n</t:root>"), 2);            // not a number
  EXPECT_EQ(failureLine(head + "<t:item t:n=\"10\"/>\n</t:root>"), 2);           // above maximum
  EXPECT_EQ(failureLine(head + "<t:item t:n=\"-1\"/>\n</t:root>"), 2);           // below minimum
  EXPECT_EQ(failureLine(head + "<t:other/>\n</t:root>"), 2);                     // unknown element
  EXPECT_EQ(failureLine(head + "<t:item t:n=\"1\" t:z=\"1\"/>\n</t:root>"), 2);  // unknown attribute
  EXPECT_EQ(failureLine(head + "\n</t:root>"), 1);                               // missing child
  EXPECT_GT(failureLine("<t:wrong xmlns:t=\"urn:test\"/>"), 0);                  // wrong root
  EXPECT_GT(failureLine("<root name=\"r\"><item n=\"1\"/></root>"), 0);          // wrong namespace
  EXPECT_NE(failureLine(""), -1);                                                // empty input fails
}

TEST(ZrXml, EntityDeclarationsAreRefusedNotExpanded) {
  const std::string bomb =
      "<?xml version=\"1.0\"?>\n<!DOCTYPE t:root [\n<!ENTITY a \"aaaaaaaaaa\">\n"
      "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">\n]>\n"
      "<t:root xmlns:t=\"urn:test\" t:name=\"&b;\"><t:item t:n=\"1\"/></t:root>";
  EXPECT_THROW(zr_xml::Document::parseMemory(bomb, "bomb.xml", schema()), HXMLException);
  const std::string external =
      "<?xml version=\"1.0\"?>\n<!DOCTYPE t:root [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>\n"
      "<t:root xmlns:t=\"urn:test\" t:name=\"&x;\"><t:item t:n=\"1\"/></t:root>";
  EXPECT_THROW(zr_xml::Document::parseMemory(external, "ext.xml", schema()), HXMLException);
}

TEST(ZrXml, DeepNestingAndBinaryInputFailCleanly) {
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<a>";
  EXPECT_THROW(zr_xml::Document::parseMemoryUnchecked(deep, "deep.xml"), HXMLException);
  EXPECT_THROW(zr_xml::Document::parseMemoryUnchecked(std::string("\0\x01\x02\xff", 4), "bin"),
               HXMLException);
  EXPECT_THROW(zr_xml::Document::parseFile("/nonexistent/file.xml", schema()), HXMLException);
}

TEST(ZrXml, BuilderWritesAndValidates) {
  zr_xml::Builder b("root", "urn:test", "t", true);
  auto root = b.root();
  root.setAttr("name", "a<b");
  root.addChild("item").setAttr("n", "5");
  EXPECT_NO_THROW(b.validate(schema()));
  const std::string text = b.toString();
  EXPECT_NE(text.find("t:name=\"a&lt;b\""), std::string::npos);
  const auto doc = zr_xml::Document::parseMemory(text, "round.xml", schema());
  EXPECT_EQ(doc.root().attr("name"), "a<b");

  zr_xml::Builder bad("root", "urn:test", "t", true);
  bad.root().setAttr("name", "x");
  EXPECT_THROW(bad.validate(schema()), HXMLException);
}
