#ifndef PLATFORM_HTEQEMUFEATUREROM_H
#define PLATFORM_HTEQEMUFEATUREROM_H

#include <cstdint>
#include <string>

#include "platform/ZrPlatformExport.h"

// The feature ROM values an emulation platform announces, as the extended
// metadata gives them: texts throughout, and a feature bitmap word derived
// from the board scheduler and peer-to-peer switches.
class ZR_PLATFORM_API HTEQEmuFeatureRom {
 public:
  HTEQEmuFeatureRom() = default;
  HTEQEmuFeatureRom(const HTEQEmuFeatureRom&) = delete;
  HTEQEmuFeatureRom& operator=(const HTEQEmuFeatureRom&) = delete;

  const std::string& getVBNV() const { return vbnv_; }
  void setVBNV(const std::string& v) { vbnv_ = v; }
  const std::string& getCdmaBaseAddress0() const { return cdmaBaseAddress_[0]; }
  void setCdmaBaseAddress0(const std::string& v) { cdmaBaseAddress_[0] = v; }
  const std::string& getCdmaBaseAddress1() const { return cdmaBaseAddress_[1]; }
  void setCdmaBaseAddress1(const std::string& v) { cdmaBaseAddress_[1] = v; }
  const std::string& getCdmaBaseAddress2() const { return cdmaBaseAddress_[2]; }
  void setCdmaBaseAddress2(const std::string& v) { cdmaBaseAddress_[2] = v; }
  const std::string& getCdmaBaseAddress3() const { return cdmaBaseAddress_[3]; }
  void setCdmaBaseAddress3(const std::string& v) { cdmaBaseAddress_[3] = v; }
  const std::string& getBitMapValue() const { return bitMapValue_; }
  void setBitMapValue(const std::string& v) { bitMapValue_ = v; }
  const std::string& getBitMapUnifiedPlatform() const { return bitMapUnifiedPlatform_; }
  void setBitMapUnifiedPlatform(const std::string& v) { bitMapUnifiedPlatform_ = v; }
  const std::string& getBitMapBoardSchedular() const { return bitMapBoardSchedular_; }
  void setBitMapBoardSchedular(const std::string& v) { bitMapBoardSchedular_ = v; }
  const std::string& getBitMapPeerToPeer() const { return bitMapPeerToPeer_; }
  void setBitMapPeerToPeer(const std::string& v) { bitMapPeerToPeer_ = v; }

  // Computes the feature bitmap word, keeps it and returns it: bit 0 is always
  // set, bit 3 when the board scheduler is "enabled", bit 16 when peer to peer
  // is "enabled". Any other text, "Enabled" included, leaves its bit clear. The
  // unified platform text and the value text do not take part.
  std::uint32_t getFeatureBitMap();

 private:
  std::string vbnv_;
  std::string cdmaBaseAddress_[4];
  std::string bitMapValue_;
  std::string bitMapUnifiedPlatform_;
  std::string bitMapBoardSchedular_;
  std::string bitMapPeerToPeer_;
  std::uint32_t featureBitMap_ = 0;
};

#endif
