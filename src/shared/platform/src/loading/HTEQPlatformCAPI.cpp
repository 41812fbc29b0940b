#include "platform/HTEQPlatformCAPI.h"

#include <cstring>
#include <exception>
#include <new>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "json/JsonText.h"
#include "json/JsonTextWriter.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONObjectWriter.h"
#include "platform/PlatformLoader.h"
#include "platform/PlatformParseException.h"

namespace {

// The message that carries the reason of a failure no reader reported itself.
const char* const kLoadFailedMsg = "@74-60@%s";

void reportFailure(const std::string& reason) { ZR_SEND_MSG(kLoadFailedMsg, ComMsgMask::kError, reason); }

// Runs an entry point's body so that no exception reaches the C caller: every
// failure becomes a null result and a message with its reason.
template <class Body>
char* firewall(const char* file, Body body) {
  try {
    if (file == nullptr) {
      reportFailure("no platform file was given (a null path)");
      return nullptr;
    }
    return body(std::string(file));
  } catch (const teq_platform::PlatformParseException&) {
    // The reader has sent its own message (such as "@74-9@"); it names the
    // file and the line, so it stays the one reason.
  } catch (const HEXFileNotFoundException& e) {
    reportFailure("the file '" + e.getFileName() + "' does not exist");
  } catch (const HEXAll& e) {
    reportFailure(e.getText());
  } catch (const std::bad_alloc&) {
    reportFailure("out of memory");
  } catch (const std::exception& e) {
    reportFailure(e.what());
  } catch (...) {
    reportFailure("an unknown error");
  }
  return nullptr;
}

std::shared_ptr<HTEQPlatform> loadPlatform(const std::string& file) {
  teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
  return loader.load();
}

// The writer's text as a string the caller frees, written straight into that
// string: the text is never held twice.
char* toCString(const teq_platform::JSONObjectWriter& writer) {
  const std::size_t size = zr_json::textSize(writer.getTree());
  char* result = new char[size + 1];
  *zr_json::writeText(writer.getTree(), result) = '\0';
  return result;
}

}  // namespace

extern "C" char* hteq_get_platform_json(const char* file) {
  return firewall(file, [](const std::string& path) -> char* {
    const auto platform = loadPlatform(path);
    if (!platform) return nullptr;
    // The text is printed from the model directly; only a document that needs
    // the tree's path semantics is built as a tree first. Both give the same
    // bytes.
    try {
      return teq_platform::platformText(*platform);
    } catch (const teq_platform::TextNeedsTree&) {
    }
    teq_platform::JSONObjectWriter writer;
    writer.writeObject(platform.get());
    return toCString(writer);
  });
}

extern "C" char* hteq_get_short_platform_json(const char* file) {
  return firewall(file, [](const std::string& path) -> char* {
    const auto platform = loadPlatform(path);
    if (!platform) return nullptr;
    teq_platform::JSONObjectWriter writer;
    writer.addKey("uniqueName", platform->getUniqueName());
    writer.addKey("file", platform->getPlatformFile());
    writer.addKey("description", platform->getDescription());
    return toCString(writer);
  });
}

extern "C" void hteq_free_json_string(char* text) { delete[] text; }
