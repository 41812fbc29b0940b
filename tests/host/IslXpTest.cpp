#include <gtest/gtest.h>

#include <boost/iostreams/device/file.hpp>
#include <boost/iostreams/filtering_stream.hpp>
#include <memory>
#include <sstream>

#include "host/HEXAll.h"
#include "host/IslXp.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

namespace xp = isl::iostreams::xp;
using zr_test::TempDir;

namespace {

std::string throughAutodetect(const std::string& path) {
  boost::iostreams::filtering_istream in;
  in.push(isl::iostreams::xp_autodetect());
  in.push(boost::iostreams::file_source(path, std::ios_base::in | std::ios_base::binary));
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

// A source that starts with `header` and then gives 'x' bytes up to 64 MiB,
// counting what it gave.
struct EndlessPacked {
  typedef char char_type;
  typedef boost::iostreams::source_tag category;
  std::string header;
  std::shared_ptr<std::size_t> given = std::make_shared<std::size_t>(0);
  std::streamsize read(char* s, std::streamsize n) {
    if (*given >= (std::size_t(64) << 20)) return -1;
    for (std::streamsize i = 0; i < n; ++i, ++*given) s[i] = *given < header.size() ? header[*given] : 'x';
    return n;
  }
};

}  // namespace

TEST(XpFormat, PackedDataUnpacksToTheSameBytes) {
  const std::string json = "{\"white_list\": [{\"products\": [\"p\"]}]}";
  const std::string packed = xp::pack(json);
  EXPECT_EQ(packed.substr(0, 8), std::string("ZRXP\x01\0\0\0", 8));
  EXPECT_EQ(static_cast<unsigned char>(packed[8]), json.size());
  EXPECT_EQ(xp::unpack(packed), json);
  EXPECT_EQ(xp::unpack(xp::pack("")), "");

  const std::string binary = zr_test::incompressible(200000) + std::string(100000, '\0');
  EXPECT_EQ(xp::unpack(xp::pack(binary)), binary);
  EXPECT_LT(xp::pack(std::string(100000, 'a')).size(), 1000u);
}

TEST(XpFormat, IsXpFormatLooksAtTheHeaderOnly) {
  TempDir dir;
  const std::string packed = dir.file("achromatic");
  xp::write_file(packed, "{}");
  EXPECT_TRUE(xp::is_xp_format(packed));
  EXPECT_FALSE(xp::is_xp_format(dir.write("plain.json", "{\"black_list\": []}")));
  EXPECT_FALSE(xp::is_xp_format(dir.write("short", "ZRXP\x01")));
  EXPECT_FALSE(xp::is_xp_format(dir.write("v2", std::string("ZRXP\x02\0\0\0\0\0\0\0\0\0\0\0", 16))));
  EXPECT_FALSE(xp::is_xp_format(dir.file("missing")));
  EXPECT_FALSE(xp::is_xp_format(dir.path()));
}

TEST(XpFormat, AutodetectUnpacksPackedStreamsAndPassesOthersThrough) {
  TempDir dir;
  std::string json = "{\"black_list\": [";
  for (int i = 0; i < 3000; ++i) json += "{\"products\": [\"p" + std::to_string(i) + "\"]},";
  json += "{}]}";
  const std::string packed = dir.file("achromatic");
  xp::write_file(packed, json);
  EXPECT_EQ(throughAutodetect(packed), json);
  EXPECT_EQ(xp::read_file(packed), json);

  const std::string plain = dir.write("plain.json", json);
  EXPECT_EQ(throughAutodetect(plain), json);
  EXPECT_EQ(xp::read_file(plain), json);
  EXPECT_EQ(throughAutodetect(dir.write("tiny", "{}")), "{}");
  EXPECT_EQ(throughAutodetect(dir.write("empty", "")), "");
}

TEST(XpFormat, DamagedPackedDataIsRefused) {
  const std::string packed = xp::pack(std::string(5000, 'x') + zr_test::incompressible(5000));

  // (Data cut short anywhere is refused in the robustness suite.)
  // A body that is not zlib data.
  std::string garbled = packed;
  for (std::size_t i = xp::kHeaderSize; i < xp::kHeaderSize + 8; ++i)
    garbled[i] = static_cast<char>(~garbled[i]);
  EXPECT_THROW(xp::unpack(garbled), HEXDataException);
  // A header that gives another size than the body holds.
  std::string longer = packed;
  longer[8] = static_cast<char>(longer[8] + 1);
  EXPECT_THROW(xp::unpack(longer), HEXDataException);
  // A header that gives less stops the unpacking as soon as the body passes it.
  std::string shorter = packed;
  shorter[8] = static_cast<char>(shorter[8] - 1);
  try {
    xp::unpack(shorter);
    ADD_FAILURE() << "a body longer than its header unpacked";
  } catch (const HEXDataException& e) {
    EXPECT_NE(e.getText().find("beyond"), std::string::npos) << e.getText();
  }
  EXPECT_THROW(xp::unpack("not packed at all"), HEXDataException);
}

TEST(XpFormat, PackedDataBeyondTheLimitIsRefusedBeforeUnpacking) {
  TempDir dir;
  const std::string bomb = dir.file("bomb");
  xp::write_file(bomb, std::string(1 << 20, '\0'));
  zr_test::ScopedMemberLimit limit(64 * 1024);
  EXPECT_THROW(xp::read_file(bomb), HEXDataException);
  std::string header = zr_test::readFile(bomb).substr(0, xp::kHeaderSize);
  EXPECT_THROW(xp::unpack(header), HEXDataException);

  // Through a stream the failure ends the stream with nothing read.
  EXPECT_TRUE(throughAutodetect(bomb).empty());
  EXPECT_THROW(xp::read_file(dir.file("missing")), HEXFileNotFoundException);

  // A packed stream longer than the limit is given up as soon as it passes
  // the limit, not read to its end first.
  EndlessPacked source{header};
  boost::iostreams::filtering_istream in;
  in.push(isl::iostreams::xp_autodetect());
  in.push(source);
  std::ostringstream out;
  out << in.rdbuf();
  EXPECT_TRUE(out.str().empty());
  EXPECT_LT(*source.given, std::size_t(1) << 20);
}
