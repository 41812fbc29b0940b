#ifndef PLATFORM_DOCSERVICE_H
#define PLATFORM_DOCSERVICE_H

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// The documentation of the platform document's keys shipped with the tool,
// and checks of user keys against it. NativeDocService is the implementation.
class ZR_PLATFORM_API DocService {
 public:
  using Tree = boost::property_tree::ptree;

  virtual ~DocService() = default;
  virtual Tree getDocKeyBranch(const Tree& tree, const std::string& key) const = 0;
  virtual Tree getBranch(const Tree& tree, const std::string& key, bool& found) const = 0;
  virtual std::string getFromFile(Tree& tree) const = 0;
  virtual std::string getAsJsonStr(const Tree& tree) const = 0;
  virtual bool isValidDocKey(Tree& tree, const std::string& key) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
