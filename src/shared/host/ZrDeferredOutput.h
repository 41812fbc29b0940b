#ifndef HOST_ZRDEFERREDOUTPUT_H
#define HOST_ZRDEFERREDOUTPUT_H

#include <string>
#include <vector>

#include "host/ComMsgMgr.h"

namespace zr_output {

// What the library says on one thread while a Scope is active there: the
// messages it sends and the words it prints on the console, kept in the
// order they came. Nothing reaches the message sink or the console until
// replay(), which another thread calls: so work done on a helper thread
// speaks, in its own order, on the thread that asked for it.
class DeferredOutput {
 public:
  DeferredOutput() = default;
  DeferredOutput(const DeferredOutput&) = delete;
  DeferredOutput& operator=(const DeferredOutput&) = delete;

  // While it lives, what this thread says goes into `output`.
  class Scope {
   public:
    explicit Scope(DeferredOutput& output);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    DeferredOutput* previous_;
  };

  // The output being kept for this thread, or null when it speaks directly.
  static DeferredOutput* active();

  void addMessage(ComMsg msg);
  void addConsoleOut(const std::string& text);
  void addConsoleErr(const std::string& text);

  // Sends everything kept, in order, as if said now on the calling thread;
  // then forgets it.
  void replay();

 private:
  enum class Kind { Message, ConsoleOut, ConsoleErr };
  struct Event {
    Kind kind;
    ComMsg message;
    std::string text;
  };
  std::vector<Event> events_;
};

}  // namespace zr_output

#endif
