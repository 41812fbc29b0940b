#include "ZrDeferredOutput.h"

#include <utility>

#include "host/HUTConsole.h"

namespace zr_output {

namespace {
thread_local DeferredOutput* activeOutput = nullptr;
}  // namespace

DeferredOutput::Scope::Scope(DeferredOutput& output) : previous_(activeOutput) { activeOutput = &output; }

DeferredOutput::Scope::~Scope() { activeOutput = previous_; }

DeferredOutput* DeferredOutput::active() { return activeOutput; }

void DeferredOutput::addMessage(ComMsg msg) { events_.push_back(Event{Kind::Message, std::move(msg), {}}); }

void DeferredOutput::addConsoleOut(const std::string& text) {
  events_.push_back(Event{Kind::ConsoleOut, ComMsg(), text});
}

void DeferredOutput::addConsoleErr(const std::string& text) {
  events_.push_back(Event{Kind::ConsoleErr, ComMsg(), text});
}

void DeferredOutput::replay() {
  std::vector<Event> events;
  events.swap(events_);
  for (const Event& event : events) {
    switch (event.kind) {
      case Kind::Message:
        ComMsgMgrInstance().deliver(event.message);
        break;
      case Kind::ConsoleOut:
        HUTConsole::out(event.text);
        break;
      case Kind::ConsoleErr:
        HUTConsole::err(event.text);
        break;
    }
  }
}

}  // namespace zr_output
