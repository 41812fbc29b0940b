// Damaged input of every shape: each operation either works or raises one of
// the library's own exceptions. Run under the sanitizers, this also shows that
// no damage leads to a bad read or write.

#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <functional>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "host/IslXp.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using zr_test::TempDir;

namespace {

// Runs every reading operation on the archive; returns a description of the
// first failure that is not one of the library's exceptions, or "".
std::string exerciseArchive(const std::string& zip, const std::string& out) {
  const std::vector<std::function<void()>> steps = {
      [&] { HUTZip::getFiles(zip); },
      [&] { HUTZip::containsFile(zip, "cfa.json"); },
      [&] {
        std::string content;
        HUTZip::readMember(zip, "cfa.json", content);
        HUTZip::readMember(zip, "bd/top.bd", content);
      },
      [&] { HUTZip::uncompressDir(zip, "", out, true); },
      [&] { HUTZip::verifyDigest(zip); },
      [&] {
        isl::iostreams::zip_istream in("bd/top.bd", zip);
        char buf[512];
        while (in.read(buf, sizeof buf)) {
        }
      },
  };
  for (std::size_t i = 0; i < steps.size(); ++i) {
    try {
      steps[i]();
    } catch (const HEXAll&) {
    } catch (const std::exception& e) {
      return "step " + std::to_string(i) + ": " + e.what();
    }
  }
  return "";
}

}  // namespace

TEST(ArchiveRobustness, EveryDamagedByteGivesAResultOrTheLibrarysException) {
  TempDir dir;
  const std::string good = dir.file("good.cfa");
  zr_test::makeZip(
      good,
      {{"cfa.json", "{\"platform\": \"p\"}"}, {"bd/", ""}, {"bd/top.bd", std::string(300, 'b') + "end"}});
  HUTZip::attachDigestEn(good);
  const std::string original = zr_test::readFile(good);
  const std::string zip = dir.file("damaged.cfa");
  const std::string out = dir.file("out");

  for (std::size_t at = 0; at < original.size(); ++at) {
    for (unsigned char flip : {0xffu, 0x01u, 0x80u}) {
      std::string damaged = original;
      damaged[at] = static_cast<char>(damaged[at] ^ flip);
      zr_test::writeFile(zip, damaged);
      const std::string failure = exerciseArchive(zip, out);
      ASSERT_EQ(failure, "") << "byte " << at << " ^ " << static_cast<int>(flip);
    }
  }
  for (std::size_t length = 0; length < original.size(); ++length) {
    zr_test::writeFile(zip, original.substr(0, length));
    ASSERT_EQ(exerciseArchive(zip, out), "") << "cut at " << length;
  }
  // Whatever was unpacked stayed below the destination.
  for (boost::filesystem::recursive_directory_iterator it(dir.path()), end; it != end; ++it) {
    const std::string p = it->path().string();
    EXPECT_TRUE(p == good || p == zip || p.compare(0, out.size(), out) == 0) << p;
  }
}

TEST(ArchiveRobustness, EveryDamagedPackedByteGivesTheDataOrADataException) {
  const std::string data = "{\"black_list\": [{\"products\": [\"a\"], \"reason\": \"r\"}]}";
  const std::string packed = isl::iostreams::xp::pack(data);
  for (std::size_t at = 0; at < packed.size(); ++at) {
    std::string damaged = packed;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x5a);
    try {
      isl::iostreams::xp::unpack(damaged);
    } catch (const HEXDataException&) {
    }
    try {
      isl::iostreams::xp::unpack(packed.substr(0, at));
      ADD_FAILURE() << "packed data cut at " << at << " unpacked";
    } catch (const HEXDataException&) {
    }
  }
}

TEST(ArchiveRobustness, CompressDirDoesNotFollowALinkBackUp) {
  TempDir dir;
  const std::string tree = dir.path() + "/tree";
  zr_test::writeFile(tree + "/a/file.txt", "x");
  ASSERT_EQ(::symlink(tree.c_str(), (tree + "/a/loop").c_str()), 0);
  const std::string zip = dir.file("t.zip");
  HUTZip::compressDir(zip, tree, false);
  EXPECT_EQ(HUTZip::getFiles(zip), (std::vector<std::string>{"a/file.txt"}));
}
