// Transform specifications: which files are read, what is counted, the errors.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <boost/property_tree/json_parser.hpp>
#include <string>

#include "platform/NativeTransformService.h"
#include "support/TestSupport.h"

using teq::platform::NativeTransformService;

namespace {

TEST(NativeTransformService, ReadsAndCountsSpecifications) {
  zr_test::TempDir dir;
  const NativeTransformService service;
  struct Case {
    const char* name;  // below dir, "" for an empty name
    const char* text;  // nullptr: not written
    int count;
    bool read;  // the text comes back
  } cases[] = {
      {"three.json", R"({"spec": {"a": "1", "b": "2", "c": "3"}})", 3, true},
      {"array.json", R"({"operation": "pick", "spec": [1, 2]})", 2, true},
      {"string.json", R"({"spec": "plain"})", 0, true},
      {"empty.json", R"({"spec": []})", 0, true},
      {".json", R"({"spec": [0]})", 1, true},
      {"upper.JSON", R"({"spec": [0]})", 0, false},
      {"spec.txt", R"({"spec": [0]})", 0, false},
      {"json", R"({"spec": [0]})", 0, false},
      {"missing.json", nullptr, 0, false},
      {"", nullptr, 0, false},
  };
  for (const auto& c : cases) {
    const std::string path = *c.name ? dir.file(c.name) : std::string();
    if (c.text) dir.write(c.name, c.text);
    EXPECT_EQ(service.getObjectsBySpec("ignored.zdf", path), c.count) << c.name;
    EXPECT_EQ(service.getTransformSpecAsJsonStr(path), c.read ? c.text : "") << c.name;
    EXPECT_EQ(service.getObjectsBySpec(nullptr, path), c.read ? c.text : "") << c.name;
  }
}

TEST(NativeTransformService, RefusesWhatIsNoRegularFileAndReportsBadJson) {
  zr_test::TempDir dir;
  const NativeTransformService service;
  const std::string fifo = dir.file("pipe.json");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  EXPECT_EQ(service.getTransformSpecAsJsonStr(fifo), "");
  EXPECT_EQ(service.getObjectsBySpec("x", fifo), 0);
  dir.write("folder.json/inside", "");
  EXPECT_EQ(service.getObjectsBySpec("x", dir.file("folder.json")), 0);

  const std::string bad = dir.write("bad.json", "{\"spec\": [1,}");
  EXPECT_THROW(service.getObjectsBySpec("x", bad), boost::property_tree::json_parser_error);
  EXPECT_EQ(service.getObjectsBySpec(nullptr, bad), "{\"spec\": [1,}");
  const std::string nospec = dir.write("nospec.json", R"({"operation": "x"})");
  EXPECT_THROW(service.getObjectsBySpec("x", nospec), boost::property_tree::ptree_bad_path);
  const std::string deep =
      dir.write("deep.json", "{\"spec\": " + std::string(1000, '[') + std::string(1000, ']') + "}");
  EXPECT_THROW(service.getObjectsBySpec("x", deep), boost::property_tree::json_parser_error);
}

}  // namespace
