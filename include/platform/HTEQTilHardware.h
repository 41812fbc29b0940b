#ifndef PLATFORM_HTEQTILHARDWARE_H
#define PLATFORM_HTEQTILHARDWARE_H

#include <cstdint>
#include <map>
#include <string>

#include "platform/JSONSerializable.h"

// The tile-array engine of a device: which kind of array it is and where its
// shim, core and memory rows lie. The numbers are carried, not interpreted.
class ZR_PLATFORM_API HTEQTilHardware : public teq_platform::JSONSerializable {
 public:
  // A fixed underlying type, so that any number a caller passes is a value
  // of the type (and answered as unknown) rather than undefined.
  enum Arch : int { NO_TIL = 0, TIL1 = 1, TILML = 2, TIL2P = 3, TIL2PS = 4, TIL2PK = 5 };

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  void setArch(Arch arch) { arch_ = arch; }
  // Accepts the names of getArchMap in any case, and "NONE" and "TIL" as the
  // old names of NO_TIL and TIL1. Anything else raises HEXAlgException and
  // leaves the architecture as it was.
  void setArch(const std::string& arch);
  Arch getArch() const { return arch_; }
  std::string getArchAsString() const { return archToString(arch_); }

  static const std::map<Arch, std::string>& getArchMap();
  static Arch stringToArch(const std::string& text);
  // "NO_TIL" for a value outside the table.
  static std::string archToString(Arch arch);

  void setStartShimRow(int v) { startShimRow_ = v; }
  int getStartShimRow() const { return startShimRow_; }
  void setNumShimRows(int v) { numShimRows_ = v; }
  int getNumShimRows() const { return numShimRows_; }
  void setStartCoreRow(int v) { startCoreRow_ = v; }
  int getStartCoreRow() const { return startCoreRow_; }
  void setNumCoreRows(int v) { numCoreRows_ = v; }
  int getNumCoreRows() const { return numCoreRows_; }
  void setStartMemRow(int v) { startMemRow_ = v; }
  int getStartMemRow() const { return startMemRow_; }
  void setNumMemRows(int v) { numMemRows_ = v; }
  int getNumMemRows() const { return numMemRows_; }
  void setNpiBaseAddress(uint32_t v) { npiBaseAddress_ = v; }
  uint32_t getNpiBaseAddress() const { return npiBaseAddress_; }

 private:
  Arch arch_ = NO_TIL;
  int startShimRow_ = 0;
  int numShimRows_ = 0;
  int startCoreRow_ = 0;
  int numCoreRows_ = 0;
  int startMemRow_ = 0;
  int numMemRows_ = 0;
  uint32_t npiBaseAddress_ = 0;
};

#endif
