#include "platform/HTEQEmuFeatureRom.h"

namespace {

const char kEnabled[] = "enabled";
constexpr std::uint32_t kAlwaysOn = 0x1;
constexpr std::uint32_t kBoardScheduler = 0x8;
constexpr std::uint32_t kPeerToPeer = 0x10000;

}  // namespace

std::uint32_t HTEQEmuFeatureRom::getFeatureBitMap() {
  std::uint32_t word = kAlwaysOn;
  if (bitMapBoardSchedular_ == kEnabled) word += kBoardScheduler;
  if (bitMapPeerToPeer_ == kEnabled) word += kPeerToPeer;
  featureBitMap_ = word;
  return featureBitMap_;
}
