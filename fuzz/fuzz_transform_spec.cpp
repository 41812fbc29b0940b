// Transform specifications: the bytes as a ".json" file. The text must come
// back as written, and counting its entries must answer or raise the property
// tree's own errors.
#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/json_parser.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "FuzzSupport.h"
#include "platform/NativeTransformService.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = zr_fuzz::scratchFile("transform", "spec.json");
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) std::abort();
  if (size != 0 && std::fwrite(data, 1, size, f) != size) std::abort();
  std::fclose(f);

  const teq::platform::NativeTransformService service;
  if (service.getTransformSpecAsJsonStr(path) != text) std::abort();
  if (service.getObjectsBySpec(nullptr, path) != text) std::abort();
  try {
    const std::int32_t count = service.getObjectsBySpec("platform.zdf", path);
    if (count < 0 || (text.empty() && count != 0)) std::abort();
  } catch (const boost::property_tree::json_parser_error&) {
  } catch (const boost::property_tree::ptree_bad_path&) {
  }
  return 0;
}
