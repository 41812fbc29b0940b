#include "platform/HTEQHardwareFeatureRom.h"

#include <boost/lexical_cast.hpp>
#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_io.hpp>
#include <cstdio>
#include <cstring>

#include "hardware/HexForm.h"
#include "host/HEXAll.h"
#include "platform/JSONObjectWriter.h"

namespace {

// Offsets of the header fields.
constexpr unsigned kMajorVersion = 4;
constexpr unsigned kMinorVersion = 5;
constexpr unsigned kMorwenBuildID = 8;
constexpr unsigned kIPBuildID = 12;
constexpr unsigned kTimeSinceEpoch = 24;
constexpr unsigned kFPGAPartName = 32;
constexpr unsigned kVBNVName = 96;
constexpr unsigned kDDRChannelCount = 160;
constexpr unsigned kDDRChannelSize = 161;
constexpr unsigned kDRBaseAddress = 168;
constexpr unsigned kFeatureBitMap = 176;
constexpr unsigned kUUID = 184;
constexpr unsigned kCDMABaseAddress = 204;
constexpr unsigned kMaxTempLimit = 220;
constexpr unsigned kMaxPowerLimit = 221;

const char* enabled(uint64_t bits, unsigned bit) { return (bits >> bit) & 1u ? "enabled" : "disabled"; }

}  // namespace

HTEQHardwareFeatureRom::HTEQHardwareFeatureRom()
    : header_(std::make_unique<unsigned char[]>(kHeaderSize)), searchPropertyName_("TEQ_FEATURE_ROM") {}

HTEQHardwareFeatureRom::~HTEQHardwareFeatureRom() = default;

uint64_t HTEQHardwareFeatureRom::readLE_(unsigned offset, unsigned size) const {
  uint64_t v = 0;
  for (unsigned i = size; i > 0; --i) v = (v << 8) | header_[offset + i - 1];
  return v;
}

void HTEQHardwareFeatureRom::writeLE_(unsigned offset, unsigned size, uint64_t value) {
  for (unsigned i = 0; i < size; ++i) header_[offset + i] = static_cast<unsigned char>(value >> (8 * i));
}

uint8_t HTEQHardwareFeatureRom::getMajorVersion() const { return header_[kMajorVersion]; }
void HTEQHardwareFeatureRom::setMajorVersion(uint8_t v) { header_[kMajorVersion] = v; }
uint8_t HTEQHardwareFeatureRom::getMinorVersion() const { return header_[kMinorVersion]; }
void HTEQHardwareFeatureRom::setMinorVersion(uint8_t v) { header_[kMinorVersion] = v; }

uint32_t HTEQHardwareFeatureRom::getMorwenBuildID() const {
  return static_cast<uint32_t>(readLE_(kMorwenBuildID, 4));
}
void HTEQHardwareFeatureRom::setMorwenBuildID(uint32_t v) { writeLE_(kMorwenBuildID, 4, v); }
uint32_t HTEQHardwareFeatureRom::getIPBuildID() const {
  return static_cast<uint32_t>(readLE_(kIPBuildID, 4));
}
void HTEQHardwareFeatureRom::setIPBuildID(uint32_t v) { writeLE_(kIPBuildID, 4, v); }
uint64_t HTEQHardwareFeatureRom::getTimeSinceEpoch() const { return readLE_(kTimeSinceEpoch, 8); }
void HTEQHardwareFeatureRom::setTimeSinceEpoch(uint64_t v) { writeLE_(kTimeSinceEpoch, 8, v); }

const char* HTEQHardwareFeatureRom::getFPGAPartName() const {
  return reinterpret_cast<const char*>(header_.get() + kFPGAPartName);
}
const char* HTEQHardwareFeatureRom::getVBNVName() const {
  return reinterpret_cast<const char*>(header_.get() + kVBNVName);
}

void HTEQHardwareFeatureRom::setName_(unsigned offset, const unsigned char (&bytes)[kNameSize],
                                      const char* what) {
  const void* zero = std::memchr(bytes, 0, kNameSize);
  if (zero == nullptr) {
    throw HEXDataException(std::string("The ") + what +
                           " specified for the Feature ROM is not a 64 char null terminated string: '" +
                           std::string(reinterpret_cast<const char*>(bytes), kNameSize) + "'");
  }
  // At most 63 characters and the terminator; the rest of the field is cleared
  // so that no part of an earlier, longer name survives.
  std::size_t length = static_cast<const unsigned char*>(zero) - bytes;
  std::memset(header_.get() + offset, 0, kNameSize);
  std::memcpy(header_.get() + offset, bytes, length);
}

void HTEQHardwareFeatureRom::setFPGAPartName(const unsigned char (&bytes)[kNameSize]) {
  setName_(kFPGAPartName, bytes, "FPGAPartName");
}
void HTEQHardwareFeatureRom::setVBNVName(const unsigned char (&bytes)[kNameSize]) {
  setName_(kVBNVName, bytes, "VBNVName");
}

uint8_t HTEQHardwareFeatureRom::getDDRChannelCount() const { return header_[kDDRChannelCount]; }
void HTEQHardwareFeatureRom::setDDRChannelCount(uint8_t v) { header_[kDDRChannelCount] = v; }
uint8_t HTEQHardwareFeatureRom::getDDRChannelSize() const { return header_[kDDRChannelSize]; }
void HTEQHardwareFeatureRom::setDDRChannelSize(uint8_t v) { header_[kDDRChannelSize] = v; }
uint64_t HTEQHardwareFeatureRom::getDRBaseAddress() const { return readLE_(kDRBaseAddress, 8); }
void HTEQHardwareFeatureRom::setDRBaseAddress(uint64_t v) { writeLE_(kDRBaseAddress, 8, v); }
uint64_t HTEQHardwareFeatureRom::getFeatureBitMap() const { return readLE_(kFeatureBitMap, 8); }
void HTEQHardwareFeatureRom::setFeatureBitMap(uint64_t v) { writeLE_(kFeatureBitMap, 8, v); }

void HTEQHardwareFeatureRom::setUUID(const unsigned char (&bytes)[kUUIDSize]) {
  std::memcpy(header_.get() + kUUID, bytes, kUUIDSize);
}

void HTEQHardwareFeatureRom::setUUID(const std::string& text) {
  if (text.empty()) return;
  boost::uuids::uuid id;
  try {
    // The conversion reads the 8-4-4-4-12 form and must use up the whole text.
    id = boost::lexical_cast<boost::uuids::uuid>(text);
  } catch (const boost::bad_lexical_cast&) {
    throw HEXAlgException("Unable to convert string to Feature ROM UUID: '" + text + "'");
  }
  std::memcpy(header_.get() + kUUID, id.data, kUUIDSize);
}

std::string HTEQHardwareFeatureRom::getUUIDAsString() const {
  static const char kDigits[] = "0123456789abcdef";
  std::string out;
  out.reserve(36);
  for (unsigned i = 0; i < kUUIDSize; ++i) {
    unsigned char b = header_[kUUID + i];
    out.push_back(kDigits[b >> 4]);
    out.push_back(kDigits[b & 0x0f]);
    if (i == 3 || i == 5 || i == 7 || i == 9) out.push_back('-');
  }
  return out;
}

void HTEQHardwareFeatureRom::checkCDMAIndex_(unsigned index) {
  if (index < getCDMABaseAddressSize()) return;
  // Reads and writes share the words, "set" included, so callers see one text.
  char text[256];
  std::snprintf(
      text, sizeof text,
      "Attempt to set the CDMA Base Address on the CFA XML DOM object using index '%u' which is out "
      "of bounds (max is: '%u')",
      index, getCDMABaseAddressSize() - 1);
  throw HEXAlgException(text);
}

uint32_t HTEQHardwareFeatureRom::getCDMABaseAddress(unsigned index) const {
  checkCDMAIndex_(index);
  return static_cast<uint32_t>(readLE_(kCDMABaseAddress + 4 * index, 4));
}

void HTEQHardwareFeatureRom::setCDMABaseAddress(unsigned index, uint32_t value) {
  checkCDMAIndex_(index);
  writeLE_(kCDMABaseAddress + 4 * index, 4, value);
}

uint8_t HTEQHardwareFeatureRom::getMaxTempLimit() const { return header_[kMaxTempLimit]; }
void HTEQHardwareFeatureRom::setMaxTempLimit(uint8_t v) { header_[kMaxTempLimit] = v; }
uint8_t HTEQHardwareFeatureRom::getMaxPowerLimit() const { return header_[kMaxPowerLimit]; }
void HTEQHardwareFeatureRom::setMaxPowerLimit(uint8_t v) { header_[kMaxPowerLimit] = v; }

void HTEQHardwareFeatureRom::toJSON(teq_platform::JSONObjectWriter& writer) const {
  // The names are read up to their terminator and never past their 64 bytes,
  // whatever a reader wrote into the raw header.
  auto name = [this](unsigned offset) {
    const char* p = reinterpret_cast<const char*>(header_.get() + offset);
    return std::string(p, strnlen(p, kNameSize));
  };
  writer.addKey("majorVersion", std::to_string(getMajorVersion()));
  writer.addKey("minorVersion", std::to_string(getMinorVersion()));
  writer.addKey("morwenBuildID", std::to_string(getMorwenBuildID()));
  writer.addKey("ipBuildID", std::to_string(getIPBuildID()));
  writer.addKey("timeSinceEpoch", std::to_string(getTimeSinceEpoch()));
  writer.addKey("fpgaPartName", name(kFPGAPartName));
  writer.addKey("vbnvName", name(kVBNVName));
  writer.addKey("ddrChannelCount", std::to_string(getDDRChannelCount()));
  writer.addKey("ddrChannelSize", std::to_string(getDDRChannelSize()));
  writer.addKey("drBaseAddress", zr_hw::hexForm(getDRBaseAddress(), 8));

  uint64_t bits = getFeatureBitMap();
  teq_platform::JSONObjectWriter features;
  features.addKey("value", zr_hw::hexForm(bits, 8));
  features.addKey("unifiedPlatform", std::string(enabled(bits, 0)));
  features.addKey("auroraLink", std::string(enabled(bits, 1)));
  features.addKey("boardMgmt", std::string(enabled(bits, 2)));
  features.addKey("boardScheduler", std::string(enabled(bits, 3)));
  features.addKey("promType", zr_hw::hexForm((bits >> 4) & 0x7, 1));
  features.addKey("debugType", zr_hw::hexForm((bits >> 8) & 0xff, 1));
  features.addKey("peerToPeer", std::string(enabled(bits, 16)));
  features.addKey("uuid", std::string(enabled(bits, 17)));
  features.addKey("clockThrottling", std::string(enabled(bits, 21)));
  features.addKey("passthruTrans", std::string(enabled(bits, 22)));
  writer.addKey("featureBitMap", std::move(features));

  writer.addKey("uuid", getUUIDAsString());
  for (unsigned i = 0; i < getCDMABaseAddressSize(); ++i) {
    writer.addKey("cdmaBaseAddress" + std::to_string(i), zr_hw::hexForm(getCDMABaseAddress(i), 4));
  }
  writer.addKey("maxTempLimit", std::to_string(getMaxTempLimit()));
  writer.addKey("maxPowerLimit", std::to_string(getMaxPowerLimit()));
}
