#include "CliSupport.h"

#include <iostream>
#include <stdexcept>

#include "host/HEXAll.h"
#include "platform/PlatformParseException.h"

namespace zr_cli {

MessageCollector::MessageCollector() : previous_(ComMsgMgrInstance().setSink(this)) {}
MessageCollector::~MessageCollector() { ComMsgMgrInstance().setSink(previous_); }

void MessageCollector::receive(const ComMsg& msg) { messages_.push_back(msg); }

std::string MessageCollector::worst() const {
  const ComMsg* worst = nullptr;
  for (const auto& m : messages_)
    if (worst == nullptr || m.mask > worst->mask) worst = &m;
  if (worst == nullptr) return std::string();
  std::string id = worst->id.substr(0, worst->id.find('@', 1) + 1);
  return ComMsgMgr::formatText(*worst) + " [" + id + "]";
}

void reportError(const std::string& file, const std::string& reason) {
  std::string oneLine = reason;
  for (auto& c : oneLine)
    if (c == '\n' || c == '\r') c = ' ';
  while (!oneLine.empty() && oneLine.back() == ' ') oneLine.pop_back();
  std::cerr << "zr-platform: " << file << ": " << oneLine << "\n";
}

int guarded(const std::string& file, const std::function<int(MessageCollector&)>& body) {
  MessageCollector messages;
  try {
    return body(messages);
  } catch (const HEXFileNotFoundException& e) {
    reportError(file, "no such file");
  } catch (const teq_platform::PlatformParseException& e) {
    const std::string detail = messages.worst();
    reportError(file, detail.empty() ? e.what() : detail);
  } catch (const HEXAll& e) {
    reportError(file, e.what());
  } catch (const std::exception& e) {
    reportError(file, e.what());
  }
  return kCannotLoad;
}

}  // namespace zr_cli
