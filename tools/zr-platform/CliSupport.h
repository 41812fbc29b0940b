#ifndef TOOLS_ZR_PLATFORM_CLISUPPORT_H
#define TOOLS_ZR_PLATFORM_CLISUPPORT_H

#include <functional>
#include <ostream>
#include <streambuf>
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
  // Prints every warning or error so far on standard error, one line each
  // under the file's name: the skipped records of a command that succeeded.
  void reportProblems(const std::string& file) const;

 private:
  std::vector<ComMsg> messages_;
  ComMsgSink* previous_;
};

// The text with every control character written as an escape: "\n", "\r",
// "\t", or "\xNN" (an escape sequence's ESC too), so that a name read from a
// file or archive can neither break a line nor drive the terminal.
std::string escapeControls(const std::string& text);

// While it lives, what the library prints on standard output goes to
// standard error instead (control characters other than line ends and tabs
// escaped), so that standard output carries the result alone; out() is the
// real standard output.
class ResultOutput {
 public:
  ResultOutput();
  ~ResultOutput();
  ResultOutput(const ResultOutput&) = delete;
  ResultOutput& operator=(const ResultOutput&) = delete;
  std::ostream& out() { return out_; }

 private:
  class EscapingBuf : public std::streambuf {
   public:
    explicit EscapingBuf(std::streambuf* to) : to_(to) {}

   protected:
    int_type overflow(int_type c) override;
    int sync() override;

   private:
    std::streambuf* to_;
  };

  std::streambuf* stdout_;
  EscapingBuf toStderr_;
  std::ostream out_;
};

// Runs a command body, turning every exception into one line on standard
// error ("zr-platform: FILE: REASON") and exit status 1. The body returns the
// exit status it wants.
int guarded(const std::string& file, const std::function<int(MessageCollector&)>& body);

// Prints "zr-platform: FILE: REASON" on standard error as one line: control
// characters in either part are escaped.
void reportError(const std::string& file, const std::string& reason);

// Throws HEXFileNotFoundException when nothing is at the path, and
// HEXUserException "not a regular file" when what is there (after links) is
// a directory, FIFO, socket or device: such a file is never opened.
void requireRegularFile(const std::string& path);

}  // namespace zr_cli

#endif
