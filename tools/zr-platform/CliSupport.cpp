#include "CliSupport.h"

#include <sys/stat.h>

#include <cstdio>
#include <iostream>
#include <stdexcept>

#include "host/HEXAll.h"
#include "platform/PlatformParseException.h"

namespace zr_cli {

MessageCollector::MessageCollector() : previous_(ComMsgMgrInstance().setSink(this)) {}
MessageCollector::~MessageCollector() { ComMsgMgrInstance().setSink(previous_); }

void MessageCollector::receive(const ComMsg& msg) { messages_.push_back(msg); }

namespace {

// "TEXT [@id]": a message with its bare id.
std::string withId(const ComMsg& msg) {
  return ComMsgMgr::formatText(msg) + " [" + msg.id.substr(0, msg.id.find('@', 1) + 1) + "]";
}

}  // namespace

std::string MessageCollector::worst() const {
  const ComMsg* worst = nullptr;
  for (const auto& m : messages_)
    if (worst == nullptr || m.mask > worst->mask) worst = &m;
  return worst == nullptr ? std::string() : withId(*worst);
}

void MessageCollector::reportProblems(const std::string& file) const {
  for (const auto& m : messages_)
    if (m.mask >= ComMsgMask::kWarning) reportError(file, ComMsgMgr::severityWord(m.mask) + ": " + withId(m));
}

namespace {

bool isControl(unsigned char c) { return c < 0x20 || c == 0x7f; }

void appendEscape(std::string& out, unsigned char c) {
  switch (c) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default: {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned>(c));
      out += hex;
    }
  }
}

}  // namespace

std::string escapeControls(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    if (isControl(c))
      appendEscape(out, c);
    else
      out += ch;
  }
  return out;
}

ResultOutput::ResultOutput()
    : stdout_(std::cout.rdbuf()), toStderr_(std::cerr.rdbuf()), out_(std::cout.rdbuf()) {
  std::cout.rdbuf(&toStderr_);
}

ResultOutput::~ResultOutput() {
  std::cout.flush();
  std::cout.rdbuf(stdout_);
  out_.flush();
}

ResultOutput::EscapingBuf::int_type ResultOutput::EscapingBuf::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const auto byte = static_cast<unsigned char>(traits_type::to_char_type(c));
  if (!isControl(byte) || byte == '\n' || byte == '\t') {
    if (traits_type::eq_int_type(to_->sputc(static_cast<char>(byte)), traits_type::eof()))
      return traits_type::eof();
    return c;
  }
  std::string escaped;
  appendEscape(escaped, byte);
  const auto size = static_cast<std::streamsize>(escaped.size());
  return to_->sputn(escaped.data(), size) == size ? c : traits_type::eof();
}

int ResultOutput::EscapingBuf::sync() { return to_->pubsync(); }

void reportError(const std::string& file, const std::string& reason) {
  std::string oneLine = reason;
  while (!oneLine.empty() && (oneLine.back() == '\n' || oneLine.back() == '\r' || oneLine.back() == ' '))
    oneLine.pop_back();
  std::cout.flush();
  std::cerr << "zr-platform: " << escapeControls(file) << ": " << escapeControls(oneLine) << "\n";
}

void requireRegularFile(const std::string& path) {
  struct stat st;
  if (path.empty() || ::stat(path.c_str(), &st) != 0) throw HEXFileNotFoundException(path);
  if (!S_ISREG(st.st_mode)) throw HEXUserException("not a regular file");
}

int guarded(const std::string& file, const std::function<int(MessageCollector&)>& body) {
  MessageCollector messages;
  try {
    const int status = body(messages);
    if (status == kOk) messages.reportProblems(file);
    return status;
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
