#ifndef HOST_HBOBOARDCDATAMANAGER_H
#define HOST_HBOBOARDCDATAMANAGER_H

#include <memory>
#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

class HBOBoard;

// The board data store: where board descriptions are looked up, and the
// boards found there. A host tool with a real store installs a factory that
// makes its own; the standalone default keeps the repository paths and knows
// no boards.
class ZR_PLATFORM_API HBOBoardCDataManager {
 public:
  using Factory = std::unique_ptr<HBOBoardCDataManager> (*)();

  virtual ~HBOBoardCDataManager();
  virtual void setBoardPartRepoPaths(const std::vector<std::string>& paths) = 0;
  virtual std::vector<std::string> getBoardPartRepoPaths() const = 0;
  // The board of a board part ("vendor:board:version"), null when unknown.
  // The board belongs to the store.
  virtual HBOBoard* getBoard(const std::string& boardPart) = 0;

  // A new store from the process-wide factory.
  static std::unique_ptr<HBOBoardCDataManager> create();
  // Installs a factory and returns the one it replaces; null restores the
  // standalone default.
  static Factory setFactory(Factory factory);
};

#endif
