#ifndef PLATFORM_HTEQHARDWAREFEATUREROM_H
#define PLATFORM_HTEQHARDWAREFEATUREROM_H

#include <cstdint>
#include <memory>
#include <string>

#include "platform/JSONSerializable.h"

// The image of the read-only memory through which a shell tells host software
// what the hardware is. The object holds the exact 224-byte header, so every
// field lives at its hardware offset in little-endian order; the accessors read
// and write those bytes, and toJSON renders them.
//
// Header layout (offset, size): 4,1 major version; 5,1 minor version; 8,4 tool
// build id; 12,4 IP build id; 24,8 seconds since the epoch; 32,64 FPGA part
// name; 96,64 VBNV name; 160,1 DDR channel count; 161,1 DDR channel size;
// 168,8 dynamic region base address; 176,8 feature bit map; 184,16 UUID;
// 204,16 four 32-bit CDMA base addresses; 220,1 maximum temperature; 221,1
// maximum power. Every other byte is reserved and never touched.
class ZR_PLATFORM_API HTEQHardwareFeatureRom : public teq_platform::JSONSerializable {
 public:
  static constexpr unsigned kHeaderSize = 224;
  static constexpr unsigned kNameSize = 64;
  static constexpr unsigned kUUIDSize = 16;

  HTEQHardwareFeatureRom();
  ~HTEQHardwareFeatureRom() override;
  HTEQHardwareFeatureRom(const HTEQHardwareFeatureRom&) = delete;
  HTEQHardwareFeatureRom& operator=(const HTEQHardwareFeatureRom&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  // The raw header, for readers that fill it directly.
  unsigned char* getRomHeader() { return header_.get(); }
  const unsigned char* getRomHeader() const { return header_.get(); }

  const std::string& getSearchPropertyName() const { return searchPropertyName_; }
  void setSearchPropertyName(const std::string& name) { searchPropertyName_ = name; }

  uint8_t getMajorVersion() const;
  void setMajorVersion(uint8_t v);
  uint8_t getMinorVersion() const;
  void setMinorVersion(uint8_t v);
  uint32_t getMorwenBuildID() const;
  void setMorwenBuildID(uint32_t v);
  uint32_t getIPBuildID() const;
  void setIPBuildID(uint32_t v);
  uint64_t getTimeSinceEpoch() const;
  void setTimeSinceEpoch(uint64_t v);

  // The names must hold a terminating zero within their 64 bytes; otherwise
  // HEXDataException is raised and the header stays as it was.
  const char* getFPGAPartName() const;
  void setFPGAPartName(const unsigned char (&bytes)[kNameSize]);
  const char* getVBNVName() const;
  void setVBNVName(const unsigned char (&bytes)[kNameSize]);

  uint8_t getDDRChannelCount() const;
  void setDDRChannelCount(uint8_t v);
  uint8_t getDDRChannelSize() const;
  void setDDRChannelSize(uint8_t v);
  uint64_t getDRBaseAddress() const;
  void setDRBaseAddress(uint64_t v);
  uint64_t getFeatureBitMap() const;
  void setFeatureBitMap(uint64_t v);

  void setUUID(const unsigned char (&bytes)[kUUIDSize]);
  // A UUID in its 8-4-4-4-12 text form; an empty text changes nothing. A text
  // that is no UUID raises HEXAlgException and changes nothing.
  void setUUID(const std::string& text);
  // 36 characters: lower-case hexadecimal digit pairs with the dashes of the
  // 8-4-4-4-12 form.
  std::string getUUIDAsString() const;

  static constexpr unsigned getCDMABaseAddressSize() { return 4; }
  // An index of 4 or more raises HEXAlgException.
  uint32_t getCDMABaseAddress(unsigned index) const;
  void setCDMABaseAddress(unsigned index, uint32_t value);

  uint8_t getMaxTempLimit() const;
  void setMaxTempLimit(uint8_t v);
  uint8_t getMaxPowerLimit() const;
  void setMaxPowerLimit(uint8_t v);

 private:
  uint64_t readLE_(unsigned offset, unsigned size) const;
  void writeLE_(unsigned offset, unsigned size, uint64_t value);
  void setName_(unsigned offset, const unsigned char (&bytes)[kNameSize], const char* what);
  static void checkCDMAIndex_(unsigned index);

  std::unique_ptr<unsigned char[]> header_;
  std::string searchPropertyName_;
};

#endif
