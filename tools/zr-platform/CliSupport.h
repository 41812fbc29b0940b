#ifndef TOOLS_ZR_PLATFORM_CLISUPPORT_H
#define TOOLS_ZR_PLATFORM_CLISUPPORT_H

#include <functional>
#include <string>
#include <vector>

#include "host/ComMsgMgr.h"

namespace zr_cli {

enum ExitCode { kOk = 0, kCannotLoad = 1, kUsage = 2 };

// Collects the library's messages while a command runs, so that a failure is
// reported as one line naming the file, the reason and the message id.
class MessageCollector : public ComMsgSink {
 public:
  MessageCollector();
  ~MessageCollector() override;
  MessageCollector(const MessageCollector&) = delete;
  MessageCollector& operator=(const MessageCollector&) = delete;
  void receive(const ComMsg& msg) override;
  // The most severe message so far, as "TEXT [@id]"; "" if none.
  std::string worst() const;

 private:
  std::vector<ComMsg> messages_;
  ComMsgSink* previous_;
};

// Runs a command body, turning every exception into one line on standard
// error ("zr-platform: FILE: REASON") and exit status 1. The body returns the
// exit status it wants; `reasonIfFailed` gives the line for a status of 1.
int guarded(const std::string& file, const std::function<int(MessageCollector&)>& body);

// Prints "zr-platform: FILE: REASON" on standard error.
void reportError(const std::string& file, const std::string& reason);

}  // namespace zr_cli

#endif
