#ifndef PLATFORM_HPLBOARD_H
#define PLATFORM_HPLBOARD_H

#include <string>
#include <vector>

#include "platform/HPLPCIeId.h"
#include "platform/HSTFwdIter.h"
#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HPLDriver;

// The board of an archive-backed platform: its names and images, its memory
// connectors with what is plugged into them, its host drivers and PCIe ids.
// The board owns its drivers and connectors.
class ZR_PLATFORM_API HPLBoard : public teq_platform::JSONSerializable {
 public:
  // Pin attribute names of the board records.
  static constexpr const char* PIN_NAME = "NAME";
  static constexpr const char* PIN_INDEX = "INDEX";
  static constexpr const char* PIN_LOC = "LOC";
  static constexpr const char* PIN_DIFFTERM = "DIFF_TERM";
  static constexpr const char* PIN_DQS_BIAS = "DQS_BIAS";
  static constexpr const char* PIN_DRIVE = "DRIVE";
  static constexpr const char* PIN_EQUALIZATION = "EQUALIZATION";
  static constexpr const char* PIN_IBUF_LOW_PWR = "IBUF_LOW_PWR";
  static constexpr const char* PIN_IOSTD = "IOSTANDARD";
  static constexpr const char* PIN_ODT = "ODT";
  static constexpr const char* PIN_OUTPUT_IMPEDANCE = "OUTPUT_IMPEDANCE";
  static constexpr const char* PIN_PRE_EMPHASIS = "PRE_EMPHASIS";
  static constexpr const char* PIN_SLEW = "SLEW";

  // A memory connector of the board and the module connected to it.
  class ZR_PLATFORM_API DimmConnector : public teq_platform::JSONSerializable {
   public:
    void toJSON(teq_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(const std::string& v) { name_ = v; }
    const std::string& getDisplayName() const { return displayName_; }
    void setDisplayName(const std::string& v) { displayName_ = v; }
    const std::string& getType() const { return type_; }
    void setType(const std::string& v) { type_ = v; }
    const std::string& getConnectedName() const { return connectedName_; }
    void setConnectedName(const std::string& v) { connectedName_ = v; }
    const std::string& getConnectedDisplayName() const { return connectedDisplayName_; }
    void setConnectedDisplayName(const std::string& v) { connectedDisplayName_ = v; }
    bool isConnected() const { return connected_; }
    void setConnected(bool v) { connected_ = v; }
    bool isLocked() const { return locked_; }
    void setLocked(bool v) { locked_ = v; }

   private:
    std::string name_;
    std::string displayName_;
    std::string type_ = "DIMM";
    std::string connectedName_;
    std::string connectedDisplayName_;
    bool connected_ = false;
    bool locked_ = false;
  };

  HPLBoard();
  ~HPLBoard() override;
  HPLBoard(const HPLBoard&) = delete;
  HPLBoard& operator=(const HPLBoard&) = delete;

  // A board with drivers cannot be written: a driver has no JSON form. Such a
  // board raises HEXAlgException and writes nothing.
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getVendor() const { return vendor_; }
  void setVendor(const std::string& v) { vendor_ = v; }
  const std::string& getPart() const { return part_; }
  void setPart(const std::string& v) { part_ = v; }
  const std::string& getBoardPart() const { return boardPart_; }
  void setBoardPart(const std::string& v) { boardPart_ = v; }
  const std::string& getImgFileHdpi() const { return imgFileHdpi_; }
  void setImgFileHdpi(const std::string& v) { imgFileHdpi_ = v; }
  const std::string& getImgFileMdpi() const { return imgFileMdpi_; }
  void setImgFileMdpi(const std::string& v) { imgFileMdpi_ = v; }
  const std::string& getImgFileLdpi() const { return imgFileLdpi_; }
  void setImgFileLdpi(const std::string& v) { imgFileLdpi_ = v; }

  HPLDriver* addDriver();
  HSTFwdIter<HPLDriver*>* createDriverIter() const;

  const HPLPCIeId& getPCIeId() const { return pcieId_; }
  HPLPCIeId& getWriteablePCIeId() { return pcieId_; }

  DimmConnector* addDimmConnector();
  DimmConnector* addDimmConnector(const std::string& name, const std::string& displayName,
                                  const std::string& type, const std::string& connectedName,
                                  const std::string& connectedDisplayName, bool connected, bool locked);
  bool hasDimmConnectors() const { return !connectors_.empty(); }
  // Replaces `out` by the connectors, which stay owned by the board.
  void getConnectorsVec(std::vector<DimmConnector*>& out) const { out = connectors_.view(); }
  // Each of these appends connector names in board order.
  void getDimmConnectors(std::vector<std::string>& out) const;
  void getLockedDimmConnectors(std::vector<std::string>& out) const;
  void getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connected) const;
  // "name connectedName" for each connected connector, the pairs joined by a blank.
  std::string getBoardConnectionsString() const;
  std::string getLockedBoardConnectionsString() const;
  std::string getUnlockedBoardConnectionsString() const;
  // The display name of the connector, or of the module connected to it, whose
  // name matches without regard to case; empty when none matches.
  std::string getConnectorDisplayName(const std::string& name) const;

 private:
  // 0: every connected connector; 1: the locked ones; 2: the unlocked ones.
  std::string connectionsString_(int which) const;

  std::string name_;
  std::string vendor_;
  std::string part_;
  std::string boardPart_;
  std::string imgFileHdpi_;
  std::string imgFileMdpi_;
  std::string imgFileLdpi_;
  HSTOwningVector<HPLDriver> drivers_;
  HSTOwningVector<DimmConnector> connectors_;
  HPLPCIeId pcieId_;
};

#endif
