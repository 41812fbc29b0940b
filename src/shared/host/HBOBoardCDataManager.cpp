#include "host/HBOBoardCDataManager.h"

#include "host/HBOBoard.h"
#include "host/HBOBoardComponent.h"

HBOBoardComponent::~HBOBoardComponent() = default;
HBOBoard::~HBOBoard() = default;
HBOBoardCDataManager::~HBOBoardCDataManager() = default;

namespace {

// Without a board library: the paths are kept for whoever asks, and no board
// is known.
class StandaloneBoardDataManager : public HBOBoardCDataManager {
 public:
  void setBoardPartRepoPaths(const std::vector<std::string>& paths) override { paths_ = paths; }
  std::vector<std::string> getBoardPartRepoPaths() const override { return paths_; }
  HBOBoard* getBoard(const std::string&) override { return nullptr; }

 private:
  std::vector<std::string> paths_;
};

std::unique_ptr<HBOBoardCDataManager> makeStandalone() {
  return std::make_unique<StandaloneBoardDataManager>();
}

HBOBoardCDataManager::Factory& factorySlot() {
  static HBOBoardCDataManager::Factory factory = &makeStandalone;
  return factory;
}

}  // namespace

std::unique_ptr<HBOBoardCDataManager> HBOBoardCDataManager::create() { return factorySlot()(); }

HBOBoardCDataManager::Factory HBOBoardCDataManager::setFactory(Factory factory) {
  Factory previous = factorySlot();
  factorySlot() = factory ? factory : &makeStandalone;
  return previous;
}
