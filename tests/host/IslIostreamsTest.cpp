#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <boost/iostreams/copy.hpp>
#include <boost/iostreams/filtering_stream.hpp>
#include <iterator>
#include <sstream>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

namespace isl_io = isl::iostreams;
using zr_test::makeZip;
using zr_test::TempDir;

namespace {

std::string slurp(std::istream& in) {
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

}  // namespace

TEST(ZipStreams, WrittenMemberReadsBackAndOthersStay) {
  TempDir dir;
  const std::string zip = dir.file("p.lfa");
  makeZip(zip, {{"hw/top.hpfm", "<hpfm/>"}});
  {
    isl_io::zip_ostream out(zip, "lfa.json", isl_io::none);
    ASSERT_TRUE(out.is_open()) << out.error();
    out << "{\n    \"name\": \"p\"\n}" << '\n';
  }
  isl_io::zip_istream in("lfa.json", zip, 12, 3);
  ASSERT_TRUE(in.is_open());
  EXPECT_EQ(slurp(in), "{\n    \"name\": \"p\"\n}\n");
  EXPECT_TRUE(isl_io::zip::is_file(zip, "hw/top.hpfm"));
  EXPECT_TRUE(isl_io::zip::is_file(zip, "lfa.json"));
  EXPECT_FALSE(isl_io::zip::is_file(zip, "cfa.json"));

  // A second stream replaces the member; an explicit close writes at once.
  isl_io::zip_ostream again(zip, "lfa.json");
  again << "{}";
  again.close();
  EXPECT_FALSE(again.is_open());
  isl_io::zip_istream reread("lfa.json", zip);
  EXPECT_EQ(slurp(reread), "{}");
  EXPECT_EQ(HUTZip::getFiles(zip), (std::vector<std::string>{"hw/top.hpfm", "lfa.json"}));
  // Nothing but the archive is left in its directory.
  EXPECT_EQ(std::distance(boost::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(ZipStreams, AMemberWhoseWritingFailsIsNotPutIntoTheArchive) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.json", "{}"}});
  const std::string before = zr_test::readFile(zip);

  std::string text;
  {
    // The member's spool cannot grow past 64 KiB.
    zr_test::ScopedFileSizeLimit limit(64 * 1024);
    isl_io::zip_ostream out(zip, "big.bit");
    out << zr_test::incompressible(512 * 1024);
    try {
      out.close();
    } catch (const HEXUserException& e) {
      text = e.getText();
    }
  }

  EXPECT_NE(text.find("writing it failed"), std::string::npos) << text;
  EXPECT_EQ(zr_test::readFile(zip), before);
  EXPECT_EQ(std::distance(boost::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(ZipStreams, StreamsThatCannotOpenSayWhy) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.xml", "<x/>"}, {"dir/", ""}});

  isl_io::zip_istream noMember("cfa.json", zip);
  EXPECT_FALSE(noMember.is_open());
  EXPECT_TRUE(noMember.fail());
  EXPECT_NE(noMember.error().find("no member 'cfa.json'"), std::string::npos) << noMember.error();
  EXPECT_FALSE(isl_io::zip_istream("dir/", zip).is_open());
  isl_io::zip_istream noArchive("cfa.xml", dir.file("none.cfa"));
  EXPECT_FALSE(noArchive.is_open());
  EXPECT_NE(noArchive.error().find("none.cfa"), std::string::npos);
  EXPECT_FALSE(isl_io::zip_istream("cfa.xml", dir.write("text.cfa", "plain text")).is_open());
  EXPECT_FALSE(isl_io::zip_istream("cfa.xml", zip, std::ios_base::out).is_open());

  EXPECT_FALSE(isl_io::zip_ostream(zip, "x", isl_io::aes256).is_open());
  EXPECT_FALSE(isl_io::zip_ostream(zip, "../x").is_open());
  EXPECT_FALSE(isl_io::zip_ostream(zip, "").is_open());
  EXPECT_FALSE(isl_io::zip_ostream(dir.file("no/such/dir/p.cfa"), "x").is_open());
  EXPECT_FALSE(HUTFile::exists(dir.file("no")));
  EXPECT_EQ(HUTZip::getFiles(zip), (std::vector<std::string>{"cfa.xml", "dir/"}));

  // An existing file that is no archive is never turned into one.
  const std::string text = dir.write("notes.cfa", "my notes");
  {
    isl_io::zip_ostream out(text, "cfa.json");
    EXPECT_FALSE(out.is_open());
    EXPECT_NE(out.error().find("notes.cfa"), std::string::npos) << out.error();
    out << "lost";
    EXPECT_TRUE(out.fail());
  }
  EXPECT_EQ(zr_test::readFile(text), "my notes");
}

TEST(ZipStreams, AFailedCommitThrowsOnCloseAndIsReportedFromTheDestructor) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.xml", "<x/>"}});
  {
    isl_io::zip_ostream out(zip, "cfa.json");
    ASSERT_TRUE(out.is_open());
    out << "{}";
    // The archive is spoilt between opening and closing.
    zr_test::writeFile(zip, "no longer a zip");
    EXPECT_THROW(out.close(), HEXDataException);
    EXPECT_FALSE(out.is_open());
  }
  EXPECT_EQ(zr_test::readFile(zip), "no longer a zip");

  makeZip(zip, {{"cfa.xml", "<x/>"}});
  ComMsgCapture cap;
  {
    isl_io::zip_ostream out(zip, "cfa.json");
    out << "{}";
    zr_test::writeFile(zip, "spoilt again");
  }
  const ComMsg* msg = cap.find("@1-1880@%s%s%s");
  ASSERT_NE(msg, nullptr);
  EXPECT_EQ(msg->mask, ComMsgMask::kError);
  EXPECT_EQ(msg->args.at(0), "cfa.json");
  EXPECT_EQ(msg->args.at(1), zip);
}

TEST(ZipStreams, FileSourceReadsAndSeeksThroughAFilteringStream) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  std::string text;
  for (int i = 0; i < 20000; ++i) text += std::to_string(i) + ",";
  makeZip(zip, {{"emu/hw_emu.json", text}});

  isl_io::device::file_source source("emu/hw_emu.json", zip, std::ios_base::in | std::ios_base::binary);
  ASSERT_TRUE(source.is_open());
  boost::iostreams::filtering_istream in;
  in.push(source);
  EXPECT_EQ(slurp(in), text);

  isl_io::device::file_source seeker("emu/hw_emu.json", zip, 12);
  char buf[6] = {};
  EXPECT_EQ(seeker.seek(50000, std::ios_base::beg), std::streampos(50000));
  ASSERT_EQ(seeker.read(buf, 5), 5);
  EXPECT_EQ(std::string(buf, 5), text.substr(50000, 5));
  EXPECT_EQ(seeker.seek(-50003, std::ios_base::cur), std::streampos(2));
  ASSERT_EQ(seeker.read(buf, 5), 5);
  EXPECT_EQ(std::string(buf, 5), text.substr(2, 5));
  EXPECT_EQ(seeker.seek(-3, std::ios_base::end), std::streampos(text.size() - 3));
  ASSERT_EQ(seeker.read(buf, 5), 3);
  EXPECT_EQ(std::string(buf, 3), text.substr(text.size() - 3));
  EXPECT_EQ(seeker.read(buf, 5), -1);
  EXPECT_THROW(seeker.seek(-1, std::ios_base::beg), std::ios_base::failure);

  isl_io::device::file_source missing("none.json", zip);
  EXPECT_FALSE(missing.is_open());
  EXPECT_EQ(missing.read(buf, 5), -1);
}

TEST(ZipStreams, DamagedOrOversizedMembersFailTheStreamWithoutACrash) {
  TempDir dir;
  const std::string zip = dir.file("bad.cfa");
  makeZip(zip, {{"cfa.json", zr_test::incompressible(20000)}});
  zr_test::damageFirstMemberData(zip);
  isl_io::zip_istream in("cfa.json", zip);
  ASSERT_TRUE(in.is_open());
  char buf[4096];
  while (in.read(buf, sizeof buf)) {
  }
  EXPECT_TRUE(in.bad());
  EXPECT_NE(in.error().find("cfa.json"), std::string::npos) << in.error();

  const std::string bomb = dir.file("bomb.cfa");
  makeZip(bomb, {{"cfa.json", std::string(1 << 20, ' ')}});
  zr_test::ScopedMemberLimit limit(4096);
  isl_io::zip_istream big("cfa.json", bomb);
  EXPECT_FALSE(big.is_open());
  EXPECT_NE(big.error().find("limit"), std::string::npos) << big.error();

  // Read as metadata, a member stops at the metadata size limit, which is
  // below the member limit.
  makeZip(bomb, {{"cfa.json", std::string(4000, ' ')}});
  const zr_test::ScopedReadLimits metadata(3999, 0);
  isl_io::zip_istream meta("cfa.json", bomb);
  ASSERT_TRUE(meta.is_open());
  EXPECT_THROW_MSG(isl_io::read_metadata(meta, "cfa.json"), HEXDataException,
                   "cfa.json: beyond the metadata size limit of 3999 bytes");
}

TEST(ZipStreams, FilterThreeUnpacksAPackedMemberAndOtherFiltersDoNot) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  const std::string packed = isl_io::xp::pack("{\"black_list\": []}");
  makeZip(zip, {{"achromatic", packed}, {"plain.json", "{}"}});

  isl_io::zip_istream unpacked("achromatic", zip, std::ios_base::in | std::ios_base::binary, 3);
  EXPECT_EQ(slurp(unpacked), "{\"black_list\": []}");
  isl_io::zip_istream raw("achromatic", zip, std::ios_base::in | std::ios_base::binary, 1);
  EXPECT_EQ(slurp(raw), packed);
  isl_io::zip_istream plain("plain.json", zip, std::ios_base::in | std::ios_base::binary, 3);
  EXPECT_EQ(slurp(plain), "{}");
}
