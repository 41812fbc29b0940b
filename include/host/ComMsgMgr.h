#ifndef HOST_COMMSGMGR_H
#define HOST_COMMSGMGR_H

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/ZrPlatformExport.h"

// Severity masks of messages, by rising severity.
namespace ComMsgMask {
constexpr unsigned kInfo = 0x4000000;
constexpr unsigned kWarning = 0x8000000;
constexpr unsigned kCriticalWarning = 0x10000000;
constexpr unsigned kError = 0x20000000;
}  // namespace ComMsgMask

// One message as sent: the id with its argument format ("@74-60@%s") and the
// arguments already turned into text. The id and arguments are the contract;
// the human text comes from the message catalogue.
struct ZR_PLATFORM_API ComMsg {
  std::string module;
  std::string sourceFile;
  int sourceLine = 0;
  std::string id;
  std::vector<std::string> args;
  unsigned mask = 0;
};

// One argument of a message; converts from the types messages carry.
class ZR_PLATFORM_API ComMsgArg {
 public:
  ComMsgArg(const std::string& s) : text_(s) {}
  ComMsgArg(const char* s) : text_(s ? s : "") {}
  template <class T, class = std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value>>
  ComMsgArg(T v) : text_(std::to_string(v)) {}
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

// Receives every message sent. A host tool installs its own; tests install a
// capturing one.
class ZR_PLATFORM_API ComMsgSink {
 public:
  virtual ~ComMsgSink();
  virtual void receive(const ComMsg& msg) = 0;
};

class ZR_PLATFORM_API ComMsgMgr {
 public:
  void sendMsg(const std::string& module, const char* sourceFile, int sourceLine, const std::string& id,
               const std::vector<ComMsgArg>& args, unsigned mask);

  // Hands a message already made to the sink as it stands, whatever thread
  // first sent it.
  void deliver(const ComMsg& msg);

  // Installs a sink and returns the one it replaces. A null sink restores the
  // default, which prints one line per message to standard error.
  ComMsgSink* setSink(ComMsgSink* sink);

  // "ERROR", "CRITICAL WARNING", "WARNING" or "INFO" for a mask.
  static std::string severityWord(unsigned mask);
  // The catalogue text of the message with its arguments filled in; the bare id
  // and arguments when the catalogue does not know the id.
  static std::string formatText(const ComMsg& msg);

 private:
  ComMsgSink* sink_ = nullptr;
};

// The process-wide message manager.
ZR_PLATFORM_API ComMsgMgr& ComMsgMgrInstance();

// Collects messages while it lives and restores the previous sink afterwards.
class ZR_PLATFORM_API ComMsgCapture : public ComMsgSink {
 public:
  ComMsgCapture();
  ~ComMsgCapture() override;
  ComMsgCapture(const ComMsgCapture&) = delete;
  ComMsgCapture& operator=(const ComMsgCapture&) = delete;

  void receive(const ComMsg& msg) override;
  const std::vector<ComMsg>& messages() const { return messages_; }
  // True if a message with this id was sent.
  bool has(const std::string& id) const;
  // The first message with this id, or null.
  const ComMsg* find(const std::string& id) const;
  void clear() { messages_.clear(); }

 private:
  std::vector<ComMsg> messages_;
  ComMsgSink* previous_;
};

// Sends a message of module "platform" from the current source location.
#define ZR_SEND_MSG(id, mask, ...) \
  ComMsgMgrInstance().sendMsg("platform", __FILE__, __LINE__, id, {__VA_ARGS__}, mask)

#endif
