#ifndef PLATFORM_NATIVEDICTSERVICE_H
#define PLATFORM_NATIVEDICTSERVICE_H

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "platform/DictService.h"
#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// Flattens a branch of a platform's document to key=value pairs. Elements of
// an array of objects are numbered a[0].x, a[1].x; an array of plain values
// lands one place behind (its first element under the empty key, the second
// under a[0]), the shape of files written from the dictionary. A key that
// comes twice keeps its first value.
class ZR_PLATFORM_API NativeDictService : public DictService {
 public:
  Dict getAsDict(const std::string& file, const std::string& path, bool& found) const override;
  // The three-argument form with defaultIncludeKeys().
  Dict getFilteredDict(const std::string& file, const std::string& path) const override;
  // The pairs whose key, with every run from a '[' to the last ']' on its line
  // written "[*]", is one of `keys`; each pair is kept as it stands.
  Dict getFilteredDict(const std::string& file, const std::string& path, const KeySet& keys) const override;

  // The tree flattened below `prefix`.
  Dict getAsDict(const boost::property_tree::ptree& tree, const std::string& prefix) const;

  static const KeySet& defaultIncludeKeys();
  // The key as the filter compares it: each bracketed run becomes "[*]".
  static std::string normalizeKey(const std::string& key);
};

}  // namespace platform
}  // namespace teq

#endif
