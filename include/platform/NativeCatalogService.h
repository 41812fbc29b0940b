#ifndef PLATFORM_NATIVECATALOGSERVICE_H
#define PLATFORM_NATIVECATALOGSERVICE_H

#include <boost/property_tree/ptree.hpp>
#include <cstddef>
#include <functional>
#include <string>

#include "platform/CatalogService.h"
#include "platform/ZrPlatformExport.h"

class HTEQHardwarePlatform;
namespace teq_platform {
class PlatformLoader;
}  // namespace teq_platform

namespace teq {
namespace platform {

// The catalog report of a platform and the support policy of this tool
// release. Failures come back as the empty string or false, with a line on
// standard output; exceptions of the loader pass to the caller, except in
// getAllAsJsonStr, which skips a platform whose loader or policy check throws
// as it skips one that fails to load. A platform without a hardware platform
// has no report.
class ZR_PLATFORM_API NativeCatalogService : public CatalogService {
 public:
  using Tree = boost::property_tree::ptree;

  std::string getAllAsJsonStr(const std::string& pathList, bool detailed, bool unused) const override;
  // The same, calling `progress` with the number of descriptors looked at and
  // their total before the first and after each one.
  using Progress = std::function<void(std::size_t done, std::size_t total)>;
  std::string getAllAsJsonStr(const std::string& pathList, bool detailed, const Progress& progress) const;
  std::string getAsJsonStr(const std::string& file, bool detailed, bool unused) const override;
  std::string getAsJsonStr(teq_platform::PlatformLoader* loader, bool detailed, bool unused) const override;
  std::string getValue(const std::string& file, const std::string& keyPath) const override;
  std::string getValue(teq_platform::PlatformLoader* loader, const std::string& keyPath) const override;

  // True when the platform's hardware platform is in the pre-synthesis state.
  bool isPreSynthPlatform(teq_platform::PlatformLoader* loader) const;
  // Fills the report; false for a null loader, a failed load or a hidden platform.
  bool getPlatformInfo_(teq_platform::PlatformLoader* loader, Tree& tree, bool detailed) const;

  // The tool's version "major.minor": the test version when set, else the environment's.
  std::string getCompilerVersion_() const;
  void setTestCompilerVersion_(const std::string& version) { testCompilerVersion_ = version; }

  // The support policy. A non-empty productName is stored with
  // HUTEnv::setProductName; the exception list is looked up under the product
  // name derived from the application root (HTEQEnv::getProductName), which
  // the first lookup of the process keeps. `reason` is set when the answer
  // needs explaining. A version text that is not a number raises
  // std::invalid_argument.
  bool isUnderWarranty(teq_platform::PlatformLoader* loader, std::string& reason,
                       const std::string& productName) const;
  bool isUnderWarranty(const std::string& file, std::string& reason, const std::string& productName) const;
  bool isPreSynthPlatformSupported(teq_platform::PlatformLoader* loader, std::string& reason) const;
  bool isPreSynthPlatformSupported(const std::string& file, std::string& reason) const;
  // A null loader answers false.
  bool canCfaBeOpened(teq_platform::PlatformLoader* loader, std::string& reason) const;
  bool canCfaBeOpened(const std::string& file, std::string& reason) const;

  // The hardware platform's version text and its first two numbers; false
  // (and zeros) for a null hardware platform.
  static bool getPlatformVersion(const HTEQHardwarePlatform* hardware, std::string& text, int& major,
                                 int& minor);
  // The exception list's verdict: 0 black, 1 white, 2 list unusable, 3 no
  // match; `reason` gets the matching entry's reason. The list's path and the
  // product it is read for are taken on the first call and kept for the
  // process; the list itself is read again when its file changes.
  static int getColor(teq_platform::PlatformLoader* loader, std::string& reason);
  // Where the exception list lies: APPROOT/platforms/achromatic.
  static std::string getAchromaticPath();

 private:
  std::string testCompilerVersion_;
};

}  // namespace platform
}  // namespace teq

#endif
