#include "platform/HPLBoard.h"

#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "platform/HPLDriver.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

void HPLBoard::DimmConnector::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("displayName", displayName_);
  writer.addKey("type", type_);
  writer.addKey("connectedName", connectedName_);
  writer.addKey("connectedDisplayName", connectedDisplayName_);
  writer.addKey("connected", connected_);
  writer.addKey("locked", locked_);
}

HPLBoard::HPLBoard() = default;

HPLBoard::~HPLBoard() = default;

HPLDriver* HPLBoard::addDriver() { return drivers_.emplace(); }

HSTFwdIter<HPLDriver*>* HPLBoard::createDriverIter() const { return HSTCreateFwdIter(drivers_.view()); }

HPLBoard::DimmConnector* HPLBoard::addDimmConnector() { return connectors_.emplace(); }

HPLBoard::DimmConnector* HPLBoard::addDimmConnector(const std::string& name, const std::string& displayName,
                                                    const std::string& type, const std::string& connectedName,
                                                    const std::string& connectedDisplayName, bool connected,
                                                    bool locked) {
  DimmConnector* c = addDimmConnector();
  c->setName(name);
  c->setDisplayName(displayName);
  c->setType(type);
  c->setConnectedName(connectedName);
  c->setConnectedDisplayName(connectedDisplayName);
  c->setConnected(connected);
  c->setLocked(locked);
  return c;
}

void HPLBoard::getDimmConnectors(std::vector<std::string>& out) const {
  for (const DimmConnector* c : connectors_) out.push_back(c->getName());
}

void HPLBoard::getLockedDimmConnectors(std::vector<std::string>& out) const {
  for (const DimmConnector* c : connectors_) {
    if (c->isLocked()) out.push_back(c->getName());
  }
}

void HPLBoard::getConnectedDimmConnectors(std::vector<std::string>& names,
                                          std::vector<std::string>& connected) const {
  for (const DimmConnector* c : connectors_) {
    if (!c->isConnected()) continue;
    names.push_back(c->getName());
    connected.push_back(c->getConnectedName());
  }
}

std::string HPLBoard::connectionsString_(int which) const {
  std::string text;
  for (const DimmConnector* c : connectors_) {
    if (!c->isConnected()) continue;
    if (which == 1 && !c->isLocked()) continue;
    if (which == 2 && c->isLocked()) continue;
    if (!text.empty()) text += ' ';
    text += c->getName() + ' ' + c->getConnectedName();
  }
  return text;
}

std::string HPLBoard::getBoardConnectionsString() const { return connectionsString_(0); }
std::string HPLBoard::getLockedBoardConnectionsString() const { return connectionsString_(1); }
std::string HPLBoard::getUnlockedBoardConnectionsString() const { return connectionsString_(2); }

std::string HPLBoard::getConnectorDisplayName(const std::string& name) const {
  for (const DimmConnector* c : connectors_) {
    if (HSTStringUtils::iequals(name, c->getName())) return c->getDisplayName();
    if (HSTStringUtils::iequals(name, c->getConnectedName())) return c->getConnectedDisplayName();
  }
  return std::string();
}

void HPLBoard::toJSON(teq_platform::JSONObjectWriter& writer) const {
  using teq_platform::JSONListWriter;
  using teq_platform::JSONObjectWriter;

  // A driver has no JSON form: as a list item it would only recurse. Refuse
  // before any key is written so that the caller's writer stays untouched.
  if (!drivers_.empty()) {
    throw HEXAlgException(
        "The board '" + name_ +
        "' cannot be written as JSON: its drivers have no JSON form, and writing them would "
        "recurse without end.");
  }
  writer.addKey("name", name_);
  writer.addKey("vendor", vendor_);
  writer.addKey("part", part_);
  writer.addKey("boardPart", boardPart_);
  writer.addKey("imageFileHdpi", imgFileHdpi_);
  writer.addKey("imageFileMdpi", imgFileMdpi_);
  writer.addKey("imageFileLdpi", imgFileLdpi_);
  JSONListWriter connectors;
  for (const DimmConnector* c : connectors_) connectors.addItem(c);
  writer.addKey("connectors", std::move(connectors));
  writer.addKey("pcie", &pcieId_);
}
