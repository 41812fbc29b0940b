#include "host/HUTConsole.h"

#include <iostream>

#include "ZrDeferredOutput.h"

// Words said on a thread whose output is deferred are kept for the thread
// that replays them.
void HUTConsole::out(const std::string& text) {
  if (zr_output::DeferredOutput* deferred = zr_output::DeferredOutput::active()) {
    deferred->addConsoleOut(text);
    return;
  }
  std::cout << text << std::flush;
}

void HUTConsole::err(const std::string& text) {
  if (zr_output::DeferredOutput* deferred = zr_output::DeferredOutput::active()) {
    deferred->addConsoleErr(text);
    return;
  }
  std::cerr << text << std::flush;
}
