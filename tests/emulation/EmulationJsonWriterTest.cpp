#include <gtest/gtest.h>

#include <boost/property_tree/json_parser/error.hpp>
#include <string>

#include "host/HUTFile.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationJsonWriter.h"
#include "platform/HTEQEmulations.h"
#include "support/TestSupport.h"

namespace {

std::string written(HTEQEmulations& model) {
  zr_test::TempDir dir;
  const std::string file = dir.file("hw_emu.json");
  HTEQEmulationJsonWriter(&model, file).writeJson();
  return zr_test::readFile(file);
}

}  // namespace

TEST(HTEQEmulationJsonWriter, WritesTheTextTheReaderReads) {
  HTEQEmulations empty;
  HTEQEmulations bare;
  bare.createEmulation("e");
  HTEQEmulations full;
  full.setPfmMetadataVersion("2.1");
  HTEQEmulation* e = full.createEmulation("hw/emu");
  e->createFile("EMU_HPFM", "a.hpfm")->setInstPath("/opt");
  e->createFile("TOP_BD", "b.bd");
  const std::pair<HTEQEmulations*, std::string> rows[] = {
      // An empty version keeps its key; empty lists are the empty string.
      {&empty, "{\n    \"pfm_metadata_version\": \"\",\n    \"emulations\": \"\"\n}\n"},
      {&bare,
       "{\n    \"pfm_metadata_version\": \"\",\n    \"emulations\": [\n        {\n"
       "            \"name\": \"e\",\n            \"files\": \"\"\n        }\n    ]\n}\n"},
      // Keys in reader order, "inst_path" only where set, "/" escaped.
      {&full,
       "{\n    \"pfm_metadata_version\": \"2.1\",\n    \"emulations\": [\n        {\n"
       "            \"name\": \"hw\\/emu\",\n            \"files\": [\n                {\n"
       "                    \"type\": \"EMU_HPFM\",\n                    \"name\": \"a.hpfm\",\n"
       "                    \"inst_path\": \"\\/opt\"\n                },\n                {\n"
       "                    \"type\": \"TOP_BD\",\n                    \"name\": \"b.bd\"\n"
       "                }\n            ]\n        }\n    ]\n}\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(written(*row.first), row.second);
}

TEST(HTEQEmulationJsonWriter, UnwritableTargetRaisesAndLeavesNoFile) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  model.createEmulation("e");
  const std::string existing = dir.write("keep.json", "old");
  zr_test::writeFile(dir.file("sub/x"), "");
  const std::string targets[] = {dir.file("missing/hw_emu.json"), dir.file("sub"), ""};
  for (const std::string& target : targets) {
    EXPECT_THROW(HTEQEmulationJsonWriter(&model, target).writeJson(),
                 boost::property_tree::json_parser::json_parser_error)
        << target;
  }
  EXPECT_EQ(zr_test::readFile(existing), "old");
  // No temporary is left behind.
  EXPECT_EQ(HUTFile::listFilesRecursive(dir.path()).size(), 2u);
}
