#ifndef HOST_HBOBOARDCOMPONENT_H
#define HOST_HBOBOARDCOMPONENT_H

#include <string>

#include "platform/ZrPlatformExport.h"

// One component of a board in the board data store, such as a connector.
class ZR_PLATFORM_API HBOBoardComponent {
 public:
  virtual ~HBOBoardComponent();
  virtual std::string getName() const = 0;
  virtual std::string getDisplayName() const = 0;
  virtual bool isDIMMConnector() const = 0;
};

#endif
