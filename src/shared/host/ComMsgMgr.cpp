#include "host/ComMsgMgr.h"

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstring>
#include <iostream>
#include <map>
#include <sstream>
#include <utility>

#include "ZrDeferredOutput.h"

namespace zr_embedded {
extern const char messages_json[];
extern const std::size_t messages_json_size;
}  // namespace zr_embedded

namespace {

// Id ("74-60") to printf-style text, read once from the embedded catalogue.
const std::map<std::string, std::string>& catalogue() {
  static const std::map<std::string, std::string> table = [] {
    std::map<std::string, std::string> t;
    std::istringstream in(std::string(zr_embedded::messages_json, zr_embedded::messages_json_size));
    boost::property_tree::ptree tree;
    try {
      boost::property_tree::read_json(in, tree);
    } catch (const std::exception&) {
      return t;
    }
    for (const auto& entry : tree) t[entry.first] = entry.second.data();
    return t;
  }();
  return table;
}

// "@74-60@%s" gives "74-60".
std::string bareId(const std::string& id) {
  if (id.size() < 2 || id[0] != '@') return id;
  const auto end = id.find('@', 1);
  return end == std::string::npos ? id : id.substr(1, end - 1);
}

class StderrSink : public ComMsgSink {
 public:
  void receive(const ComMsg& msg) override {
    std::cerr << ComMsgMgr::severityWord(msg.mask) << ": [" << msg.module << " " << bareId(msg.id) << "] "
              << ComMsgMgr::formatText(msg) << "\n";
  }
};

StderrSink& defaultSink() {
  static StderrSink sink;
  return sink;
}

}  // namespace

ComMsgSink::~ComMsgSink() = default;

void ComMsgMgr::sendMsg(const std::string& module, const char* sourceFile, int sourceLine,
                        const std::string& id, const std::vector<ComMsgArg>& args, unsigned mask) {
  ComMsg msg;
  msg.module = module;
  msg.sourceFile = sourceFile ? sourceFile : "";
  msg.sourceLine = sourceLine;
  msg.id = id;
  msg.mask = mask;
  msg.args.reserve(args.size());
  for (const auto& a : args) msg.args.push_back(a.text());
  // A thread whose output is deferred never reaches the sink: the message is
  // kept for the thread that replays it.
  if (zr_output::DeferredOutput* deferred = zr_output::DeferredOutput::active()) {
    deferred->addMessage(std::move(msg));
    return;
  }
  deliver(msg);
}

void ComMsgMgr::deliver(const ComMsg& msg) {
  (sink_ ? *sink_ : static_cast<ComMsgSink&>(defaultSink())).receive(msg);
}

ComMsgSink* ComMsgMgr::setSink(ComMsgSink* sink) {
  ComMsgSink* old = sink_;
  sink_ = sink;
  return old;
}

std::string ComMsgMgr::severityWord(unsigned mask) {
  if (mask & ComMsgMask::kError) return "ERROR";
  if (mask & ComMsgMask::kCriticalWarning) return "CRITICAL WARNING";
  if (mask & ComMsgMask::kWarning) return "WARNING";
  return "INFO";
}

std::string ComMsgMgr::formatText(const ComMsg& msg) {
  const auto& table = catalogue();
  const auto it = table.find(bareId(msg.id));
  if (it == table.end()) {
    std::string text = msg.id;
    for (const auto& a : msg.args) text += " '" + a + "'";
    return text;
  }
  // Each conversion (%s, %d, %u, %lu, ...) takes the next argument as text;
  // "%%" is a percent sign. Missing arguments stay empty.
  const std::string& fmt = it->second;
  std::string out;
  std::size_t next = 0;
  for (std::size_t i = 0; i < fmt.size(); ++i) {
    if (fmt[i] != '%' || i + 1 == fmt.size()) {
      out += fmt[i];
      continue;
    }
    if (fmt[i + 1] == '%') {
      out += '%';
      ++i;
      continue;
    }
    std::size_t j = i + 1;
    while (j < fmt.size() && std::strchr("lhz", fmt[j])) ++j;
    if (j < fmt.size()) {
      if (next < msg.args.size()) out += msg.args[next];
      ++next;
      i = j;
    }
  }
  return out;
}

ComMsgMgr& ComMsgMgrInstance() {
  static ComMsgMgr mgr;
  return mgr;
}

ComMsgCapture::ComMsgCapture() : previous_(ComMsgMgrInstance().setSink(this)) {}
ComMsgCapture::~ComMsgCapture() { ComMsgMgrInstance().setSink(previous_); }
void ComMsgCapture::receive(const ComMsg& msg) { messages_.push_back(msg); }

bool ComMsgCapture::has(const std::string& id) const { return find(id) != nullptr; }

const ComMsg* ComMsgCapture::find(const std::string& id) const {
  for (const auto& m : messages_)
    if (m.id == id) return &m;
  return nullptr;
}
