#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <sstream>

#include "host/HEXAll.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"
#include "platform/JSONSerializable.h"

using teq_platform::JSONListWriter;
using teq_platform::JSONObjectWriter;
using teq_platform::JSONSerializable;
using teq_platform::JSONWriter;

namespace {

std::string text(const JSONWriter& w) {
  std::ostringstream out;
  w.write(out);
  return out.str();
}

struct Named : JSONSerializable {
  std::string name;
  void toJSON(JSONObjectWriter& w) const override { w.addKey("name", name); }
};

}  // namespace

TEST(JSONWriter, PrettyTextIndentsFourBlanksQuotesLeavesAndEscapesSlash) {
  JSONObjectWriter w;
  w.addKey("path", std::string("a/b"));
  w.addKey("count", 3);
  w.addKey("flag", false);
  JSONListWriter list;
  list.addItem(std::string("x"));
  list.addItem(std::string("y"));
  w.addKey("items", list);
  JSONObjectWriter child;
  child.addKey("k", std::string("v"));
  w.addKey("child", child);
  EXPECT_EQ(text(w),
            "{\n"
            "    \"path\": \"a\\/b\",\n"
            "    \"count\": \"3\",\n"
            "    \"flag\": \"false\",\n"
            "    \"items\": [\n"
            "        \"x\",\n"
            "        \"y\"\n"
            "    ],\n"
            "    \"child\": {\n"
            "        \"k\": \"v\"\n"
            "    }\n"
            "}\n");
}

TEST(JSONWriter, EmptyStringsObjectsAndListsAreLeftOut) {
  JSONObjectWriter w;
  EXPECT_EQ(text(w), "{\n}\n");
  w.addKey("description", std::string());
  w.addKey("unified", false);
  Named empty;
  w.addKey("object", &empty);
  w.addKey("null", static_cast<const JSONSerializable*>(nullptr));
  w.addKey("list", std::vector<std::string>{"", ""});
  JSONListWriter list;
  list.addItem(&empty);
  list.addItem(JSONObjectWriter());
  w.addKey("objects", list);
  w.addKey("some", std::vector<std::string>{"", "z"});
  EXPECT_EQ(text(w), "{\n    \"unified\": \"false\",\n    \"some\": [\n        \"z\"\n    ]\n}\n");
}

TEST(JSONWriter, ObjectsWriteDirectlyOrNested) {
  Named n;
  n.name = "n1";
  JSONObjectWriter direct;
  direct.writeObject(&n);
  direct.writeObject(static_cast<const JSONSerializable*>(nullptr));
  EXPECT_EQ(direct.getTree().get<std::string>("name"), "n1");
  JSONListWriter list;
  list.addItem(&n);
  list.addItem(&n);
  JSONObjectWriter w;
  w.addKey("all", list);
  EXPECT_EQ(w.getTree().get_child("all").size(), 2u);
  EXPECT_EQ(w.getTree().get_child("all").front().first, "");
}

// A Boolean list item is refused and adds nothing; a string over an object
// cannot be written; a bare tree with only a value is dropped.
TEST(JSONWriter, WhatJSONCannotHoldIsRefusedOrDropped) {
  JSONListWriter list;
  EXPECT_THROW(list.addItem(true), HEXAlgException);
  EXPECT_THROW(list.addItem(false), HEXAlgException);
  EXPECT_TRUE(list.empty());

  JSONObjectWriter w;
  w.addKey("a.b", std::string("1"));
  w.addKey("a", std::string("2"));
  std::ostringstream out;
  EXPECT_THROW(w.write(out), boost::property_tree::json_parser_error);

  JSONObjectWriter bare;
  bare.addKey("t", boost::property_tree::ptree("value"));
  EXPECT_TRUE(bare.empty());
}
