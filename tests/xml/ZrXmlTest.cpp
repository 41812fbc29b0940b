#include <gtest/gtest.h>

#include <chrono>
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

namespace {

// The text of the HXMLException the parse raises, prefixed with its line ("3: ..."), or "" when it parses.
std::string refusal(const std::string& doc) {
  try {
    zr_xml::Document::parseMemoryUnchecked(doc, "t.xml");
  } catch (const HXMLException& e) {
    return std::to_string(e.getLineNumber()) + ": " + e.getText();
  }
  return "";
}

std::string repeated(const std::string& piece, std::size_t n) {
  std::string out;
  for (std::size_t i = 0; i < n; ++i) out += piece;
  return out;
}

std::string attributes(std::size_t n) {
  std::string out;
  for (std::size_t i = 0; i < n; ++i) out += " a" + std::to_string(i) + "=\"1\"";
  return out;
}

}  // namespace

TEST(ZrXml, OutsizedCompressedAndOverlongDocumentsAreRefusedNamingTheLimit) {
  const zr_test::ScopedReadLimits limits(1 << 20, 200);
  const std::size_t attrs = zr_xml::kMaxAttributes, kids = zr_xml::kMaxChildren;
  // '=' and '>' inside values, comments, CDATA and instructions are no attributes or elements.
  const std::string markup = "<?pi " + repeated("a=1 ", 2 * attrs) + "?><!-- " + repeated("<b>=", attrs) +
                             " --><![CDATA[" + repeated("<c a='1'>", attrs) + "]]>";
  const struct {
    std::string doc;
    std::string expected;  // "" when the document parses
  } cases[] = {
      {"<r>\n<e" + attributes(attrs) + "/></r>", ""},
      {"<r>\n<e" + attributes(attrs - 1) + " q=\"" + repeated("=>", attrs) + "\"/></r>", ""},
      {"<r>\n\n<e" + attributes(attrs + 1) + "/></r>",
       "3: t.xml:3: an element with more than 256 attributes"},
      {"<r>" + repeated("<e/>", kids) + "</r>", ""},
      {"<r>\n" + repeated("<e>x</e>", kids + 1) + "</r>",
       "2: t.xml:2: an element with more than 100000 children"},
      {"<r>" + markup + "</r>", ""},
      {std::string("\x1f\x8b\x08\0", 4), "0: t.xml: the document is compressed (gzip)"},
      {std::string("\xfd\x37\x7a\x58\x5a\0\0", 7), "0: t.xml: the document is compressed (xz)"},
      {"<r>" + std::string(1 << 20, ' ') + "</r>",
       "0: t.xml: the document is 1048583 bytes, beyond the metadata size limit of 1048576 bytes"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.doc.substr(0, 60));
    const std::string text = refusal(c.doc);
    if (c.expected.empty())
      EXPECT_EQ(text, "");
    else
      EXPECT_EQ(text.substr(0, c.expected.size()), c.expected) << text;
  }
  // Elements and attributes of the whole document: the tree's memory is bounded
  // whatever the text's size.
  const zr_test::ScopedReadLimits roomy(64 << 20, 200);
  const std::string group = "<f>" + repeated("<e/>", kids - 1) + "</f>";
  const std::string expected = "1: t.xml:1: the document has more than 4000000 elements and attributes";
  EXPECT_EQ(refusal("<r>" + repeated(group, zr_xml::kMaxNodes / kids) + "</r>").substr(0, expected.size()),
            expected);
}

TEST(ZrXml, FilesOtherThanRegularOnesAreRefusedWithoutBlocking) {
  zr_test::TempDir dir;
  const std::string fifo = dir.file("pipe.xml");
  const zr_test::GuardedFifo guard(fifo);
  const auto start = std::chrono::steady_clock::now();
  for (const std::string& path : {fifo, std::string("/dev/null"), dir.path()}) {
    try {
      zr_xml::Document::parseFile(path, schema());
      ADD_FAILURE() << path << " was parsed";
    } catch (const HXMLException& e) {
      EXPECT_NE(e.getText().find("not a regular file"), std::string::npos) << e.getText();
    }
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  // A file past the size limit is refused before it is read.
  const zr_test::ScopedReadLimits limits(64, 200);
  const std::string big =
      dir.write("big.xml", "<t:root xmlns:t=\"urn:test\" t:name=\"" + std::string(64, 'n') + "\"/>");
  try {
    zr_xml::Document::parseFile(big, schema());
    ADD_FAILURE() << "a file past the limit was parsed";
  } catch (const HXMLException& e) {
    EXPECT_NE(e.getText().find("metadata size limit of 64 bytes"), std::string::npos) << e.getText();
  }
}
