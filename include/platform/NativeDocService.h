#ifndef PLATFORM_NATIVEDOCSERVICE_H
#define PLATFORM_NATIVEDOCSERVICE_H

#include <string>

#include "platform/DocService.h"
#include "platform/PlatformLoader.h"
#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// The key documentation file <application root>/platforms/platform_keys_doc.json:
// a JSON object that mirrors the keys of the platform document, with its
// texts under the branch "documentation_keys". Problems are written to
// standard error in plain words.
class ZR_PLATFORM_API NativeDocService : public DocService {
 public:
  NativeDocService() : mode_(teq_platform::PlatformLoader::Default) {}
  explicit NativeDocService(teq_platform::PlatformLoader::HwMetadataMode mode) : mode_(mode) {}

  // The branch under a key that contains "documentation_keys": each '.'
  // segment descends when the current branch has it and is passed over when
  // not. An empty tree for any other key.
  Tree getDocKeyBranch(const Tree& tree, const std::string& key) const override;
  // The node at `key` in the tree, looked up with the document rules of
  // NativeObjectService::getNodeByPath.
  Tree getBranch(const Tree& tree, const std::string& key, bool& found) const override;
  // Reads the file into `tree` and answers its path; "" (tree untouched) when
  // it does not exist. When it exists but cannot be read (a directory, a FIFO)
  // the tree stays as it was and the path is answered.
  std::string getFromFile(Tree& tree) const override;
  std::string getAsJsonStr(const Tree& tree) const override;
  // True for "all", "list_keys" and any key of the tree (indexes written as
  // "[]"); otherwise false and one line on standard error. A segment with a
  // '[' and no ']' raises std::out_of_range.
  bool isValidDocKey(Tree& tree, const std::string& key) const override;

 private:
  teq_platform::PlatformLoader::HwMetadataMode mode_;
};

}  // namespace platform
}  // namespace teq

#endif
