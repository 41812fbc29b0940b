#ifndef HOST_HBOBOARD_H
#define HOST_HBOBOARD_H

#include <vector>

#include "platform/ZrPlatformExport.h"

class HBOBoardComponent;

// One board of the board data store. The components it lists belong to the
// store and live as long as it does.
class ZR_PLATFORM_API HBOBoard {
 public:
  virtual ~HBOBoard();
  // Appends the board's connectors.
  virtual void getConnectorsList(std::vector<HBOBoardComponent*>& out) const = 0;
  // Appends the connectors that fit `connector`.
  virtual void getCompatibleConnectorsList(const HBOBoardComponent* connector,
                                           std::vector<HBOBoardComponent*>& out) const = 0;
};

#endif
