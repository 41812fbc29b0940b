#ifndef HOST_HUTCONSOLE_H
#define HOST_HUTCONSOLE_H

#include <string>

#include "platform/ZrPlatformExport.h"

// The plain words some classes print for the user, outside the message
// manager. Text goes out as given, with no line end added, and is flushed.
class ZR_PLATFORM_API HUTConsole {
 public:
  static void out(const std::string& text);
  static void err(const std::string& text);
};

#endif
