#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

#include "host/HEXAll.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"

using zr_test::jsonTree;

namespace {

using Name = unsigned char[HTEQHardwareFeatureRom::kNameSize];

void fillName(Name& name, const std::string& text) {
  std::memset(name, 0, sizeof name);
  std::memcpy(name, text.data(), std::min<std::size_t>(text.size(), sizeof name));
}

std::vector<unsigned char> headerBytes(const HTEQHardwareFeatureRom& rom) {
  const unsigned char* h = rom.getRomHeader();
  return std::vector<unsigned char>(h, h + HTEQHardwareFeatureRom::kHeaderSize);
}

// Every byte of the header that no accessor may write.
bool isReserved(unsigned offset) {
  return offset < 4 || (offset >= 6 && offset < 8) || (offset >= 16 && offset < 24) ||
         (offset >= 162 && offset < 168) || (offset >= 200 && offset < 204) || offset >= 222;
}

}  // namespace

TEST(HTEQHardwareFeatureRom, FieldsLandAtTheirOffsetsLittleEndianAndReservedBytesStay) {
  HTEQHardwareFeatureRom rom;
  unsigned char* raw = rom.getRomHeader();
  for (unsigned i = 0; i < 224; ++i) {
    if (isReserved(i)) raw[i] = 0xa5;
  }
  rom.setMajorVersion(0x12);
  rom.setMinorVersion(0x34);
  rom.setMorwenBuildID(0x01020304u);
  rom.setIPBuildID(0x0a0b0c0du);
  rom.setTimeSinceEpoch(0x1122334455667788ull);
  Name part;
  fillName(part, "partx");
  rom.setFPGAPartName(part);
  Name vbnv;
  fillName(vbnv, "v:b:n:1");
  rom.setVBNVName(vbnv);
  rom.setDDRChannelCount(2);
  rom.setDDRChannelSize(16);
  rom.setDRBaseAddress(0x0000000400000000ull);
  rom.setFeatureBitMap(0x8877665544332211ull);
  unsigned char id[16];
  for (unsigned i = 0; i < 16; ++i) id[i] = static_cast<unsigned char>(0xf0 + i);
  rom.setUUID(id);
  for (unsigned i = 0; i < 4; ++i) rom.setCDMABaseAddress(i, 0xc0de0000u + i);
  rom.setMaxTempLimit(95);
  rom.setMaxPowerLimit(225);

  const std::vector<unsigned char> h = headerBytes(rom);
  for (unsigned i = 0; i < 224; ++i) {
    if (isReserved(i)) {
      EXPECT_EQ(0xa5, h[i]) << "reserved byte " << i;
    }
  }
  EXPECT_EQ(0x12, h[4]);
  EXPECT_EQ(0x34, h[5]);
  EXPECT_EQ((std::vector<unsigned char>{0x04, 0x03, 0x02, 0x01}), std::vector<unsigned char>(&h[8], &h[12]));
  EXPECT_EQ((std::vector<unsigned char>{0x0d, 0x0c, 0x0b, 0x0a}), std::vector<unsigned char>(&h[12], &h[16]));
  EXPECT_EQ((std::vector<unsigned char>{0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11}),
            std::vector<unsigned char>(&h[24], &h[32]));
  EXPECT_EQ(0, std::memcmp(&h[32], "partx\0", 6));
  EXPECT_EQ(0, std::memcmp(&h[96], "v:b:n:1\0", 8));
  EXPECT_EQ(2, h[160]);
  EXPECT_EQ(16, h[161]);
  EXPECT_EQ((std::vector<unsigned char>{0, 0, 0, 0, 4, 0, 0, 0}),
            std::vector<unsigned char>(&h[168], &h[176]));
  EXPECT_EQ(0x11, h[176]);
  EXPECT_EQ(0x88, h[183]);
  EXPECT_EQ(0xf0, h[184]);
  EXPECT_EQ(0xff, h[199]);
  EXPECT_EQ((std::vector<unsigned char>{0x00, 0x00, 0xde, 0xc0, 0x01, 0x00, 0xde, 0xc0}),
            std::vector<unsigned char>(&h[204], &h[212]));
  EXPECT_EQ(0x03, h[216]);
  EXPECT_EQ(95, h[220]);
  EXPECT_EQ(225, h[221]);

  // The names are read back to their terminator; every other field through the JSON text.
  EXPECT_STREQ("partx", rom.getFPGAPartName());
  EXPECT_STREQ("v:b:n:1", rom.getVBNVName());
  EXPECT_EQ(
      zr_test::flatJson(rom),
      R"({"majorVersion":"18","minorVersion":"52","morwenBuildID":"16909060","ipBuildID":"168496141",)"
      R"("timeSinceEpoch":"1234605616436508552","fpgaPartName":"partx","vbnvName":"v:b:n:1",)"
      R"("ddrChannelCount":"2","ddrChannelSize":"16","drBaseAddress":"0x400000000","featureBitMap":{)"
      R"("value":"0x8877665544332211","unifiedPlatform":"enabled","auroraLink":"disabled",)"
      R"("boardMgmt":"disabled","boardScheduler":"disabled","promType":"0x1","debugType":"0x22",)"
      R"("peerToPeer":"enabled","uuid":"enabled","clockThrottling":"enabled","passthruTrans":"disabled"},)"
      R"("uuid":"f0f1f2f3-f4f5-f6f7-f8f9-fafbfcfdfeff","cdmaBaseAddress0":"0xc0de0000",)"
      R"("cdmaBaseAddress1":"0xc0de0001","cdmaBaseAddress2":"0xc0de0002","cdmaBaseAddress3":"0xc0de0003",)"
      R"("maxTempLimit":"95","maxPowerLimit":"225"})");
}

TEST(HTEQHardwareFeatureRom, NamesNeedATerminatorWithinSixtyFourBytes) {
  HTEQHardwareFeatureRom rom;
  Name longest;
  fillName(longest, std::string(63, 'p'));
  rom.setFPGAPartName(longest);
  EXPECT_EQ(std::string(63, 'p'), rom.getFPGAPartName());

  // A shorter name replaces the longer one completely.
  Name shorter;
  fillName(shorter, "ab");
  rom.setFPGAPartName(shorter);
  EXPECT_STREQ("ab", rom.getFPGAPartName());

  const std::vector<unsigned char> before = headerBytes(rom);
  Name full;
  std::memset(full, 'q', sizeof full);
  const std::string tail = " specified for the Feature ROM is not a 64 char null terminated string: '" +
                           std::string(64, 'q') + "'";
  EXPECT_THROW_MSG(rom.setFPGAPartName(full), HEXDataException, "The FPGAPartName" + tail);
  EXPECT_THROW_MSG(rom.setVBNVName(full), HEXDataException, "The VBNVName" + tail);
  EXPECT_EQ(before, headerBytes(rom));
}

TEST(HTEQHardwareFeatureRom, UUIDTextIsReadWholeOrRefused) {
  HTEQHardwareFeatureRom rom;
  rom.setUUID(std::string());
  EXPECT_EQ("00000000-0000-0000-0000-000000000000", rom.getUUIDAsString());

  rom.setUUID("0123ABCD-4567-89ab-cdef-0011223344FF");
  EXPECT_EQ("0123abcd-4567-89ab-cdef-0011223344ff", rom.getUUIDAsString());
  EXPECT_EQ(0x01, rom.getRomHeader()[184]);
  EXPECT_EQ(0xff, rom.getRomHeader()[199]);

  rom.setUUID(std::string());
  EXPECT_EQ("0123abcd-4567-89ab-cdef-0011223344ff", rom.getUUIDAsString());

  for (const std::string bad :
       {"not-a-uuid", "0123abcd-4567-89ab-cdef-0011223344ff-extra", "0123abcd-4567-89ab-cdef-0011223344f",
        "0123abcd-4567-89ab-cdef-0011223344ffz"}) {
    EXPECT_THROW_MSG(rom.setUUID(bad), HEXAlgException,
                     "Unable to convert string to Feature ROM UUID: '" + bad + "'");
    EXPECT_EQ("0123abcd-4567-89ab-cdef-0011223344ff", rom.getUUIDAsString());
  }
}

TEST(HTEQHardwareFeatureRom, CDMAIndexOutOfRangeIsRefusedWithTheSameWordsForReadAndWrite) {
  HTEQHardwareFeatureRom rom;
  rom.setCDMABaseAddress(3, 7);
  const std::vector<unsigned char> before = headerBytes(rom);
  const std::string words =
      "Attempt to set the CDMA Base Address on the CFA XML DOM object using index '4' which is out of bounds "
      "(max is: '3')";
  EXPECT_THROW_MSG(rom.setCDMABaseAddress(4, 1), HEXAlgException, words);
  EXPECT_THROW_MSG(rom.getCDMABaseAddress(4), HEXAlgException, words);
  EXPECT_EQ(before, headerBytes(rom));
  EXPECT_EQ(7u, rom.getCDMABaseAddress(3));
}

TEST(HTEQHardwareFeatureRom, ANewRomIsAllZeroAndWritesBareHexZerosForEveryKey) {
  const HTEQHardwareFeatureRom rom;
  EXPECT_EQ(std::vector<unsigned char>(224, 0), headerBytes(rom));
  EXPECT_EQ(
      zr_test::flatJson(rom),
      R"({"majorVersion":"0","minorVersion":"0","morwenBuildID":"0","ipBuildID":"0","timeSinceEpoch":"0",)"
      R"("ddrChannelCount":"0","ddrChannelSize":"0","drBaseAddress":"0x","featureBitMap":{"value":"0x",)"
      R"("unifiedPlatform":"disabled","auroraLink":"disabled","boardMgmt":"disabled",)"
      R"("boardScheduler":"disabled","promType":"0x","debugType":"0x","peerToPeer":"disabled",)"
      R"("uuid":"disabled","clockThrottling":"disabled","passthruTrans":"disabled"},)"
      R"("uuid":"00000000-0000-0000-0000-000000000000","cdmaBaseAddress0":"0x","cdmaBaseAddress1":"0x",)"
      R"("cdmaBaseAddress2":"0x","cdmaBaseAddress3":"0x","maxTempLimit":"0","maxPowerLimit":"0"})");
}

// Each flag reads its own bit: with only that bit set, only its key is enabled.
TEST(HTEQHardwareFeatureRom, EachFeatureFlagReadsItsOwnBit) {
  const std::vector<std::pair<unsigned, const char*>> flags = {
      {0, "unifiedPlatform"}, {1, "auroraLink"}, {2, "boardMgmt"},        {3, "boardScheduler"},
      {16, "peerToPeer"},     {17, "uuid"},      {21, "clockThrottling"}, {22, "passthruTrans"}};
  HTEQHardwareFeatureRom rom;
  for (const auto& flag : flags) {
    rom.setFeatureBitMap(1ull << flag.first);
    for (const auto& other : flags) {
      EXPECT_EQ(jsonTree(rom).get<std::string>("featureBitMap." + std::string(other.second)),
                other.first == flag.first ? "enabled" : "disabled")
          << "bit " << flag.first << ", key " << other.second;
    }
  }
  // Three bits of PROM type above the flags, eight bits of debug type above those.
  rom.setFeatureBitMap(0xfff0);
  EXPECT_EQ(jsonTree(rom).get<std::string>("featureBitMap.promType"), "0x7");
  EXPECT_EQ(jsonTree(rom).get<std::string>("featureBitMap.debugType"), "0xff");
  EXPECT_EQ(jsonTree(rom).get<std::string>("featureBitMap.boardScheduler"), "disabled");
}
