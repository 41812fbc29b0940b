#include "platform/HTEQPlatformCAPI.h"

#include <cstring>
#include <stdexcept>

#include "json/JsonText.h"
#include "json/JsonTextWriter.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONObjectWriter.h"
#include "platform/PlatformLoader.h"

namespace {

std::shared_ptr<HTEQPlatform> loadPlatform(const char* file) {
  if (file == nullptr) throw std::logic_error("basic_string: construction from null is not valid");
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
  const auto platform = loadPlatform(file);
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
}

extern "C" char* hteq_get_short_platform_json(const char* file) {
  const auto platform = loadPlatform(file);
  if (!platform) return nullptr;
  teq_platform::JSONObjectWriter writer;
  writer.addKey("uniqueName", platform->getUniqueName());
  writer.addKey("file", platform->getPlatformFile());
  writer.addKey("description", platform->getDescription());
  return toCString(writer);
}

extern "C" void hteq_free_json_string(char* text) { delete[] text; }
