#ifndef HOST_HUTENV_H
#define HOST_HUTENV_H

#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

// The tool's environment as the library sees it: environment variables, the
// application roots, the temporary directory, the tool version and the product
// name. A host tool plugs in its own with setInstance; the default reads
//   ZR_PLATFORM_APP_ROOTS  a ':' list of application roots, the first being the
//                          application root
//   TMPDIR                 the temporary directory (else /tmp)
// and takes the version from the build. Each default can also be set directly.
//
// It also holds the limits on what the library reads into memory:
//   max metadata size      64 MiB. The largest XML document, and the largest
//                          archive member read whole (metadata), that is read;
//                          past it the read fails with a sentence naming the
//                          limit. The largest real platforms hold a few tens
//                          of MB of metadata.
//   max compression ratio  200. An archive member larger than 1 MiB that
//                          inflates more than this many times its stored size
//                          is refused, whether read or unpacked; smaller
//                          members may compress as well as they like. 0 lifts
//                          the limit.
//
// and how many threads a catalog of a repository loads platforms on:
//   catalog workers        0, automatic: one per processor, at most 4. Set,
//                          or taken from ZR_PLATFORM_CATALOG_WORKERS when not
//                          set; 1 loads one platform after the other on the
//                          calling thread.
class ZR_PLATFORM_API HUTEnv {
 public:
  HUTEnv();
  virtual ~HUTEnv();

  // The value of an environment variable, empty when unset.
  virtual std::string get(const std::string& name) const;
  virtual bool isSet(const std::string& name) const;

  virtual std::vector<std::string> getKELAppRootList() const;
  virtual std::string getJUNAppRoot() const;
  virtual std::string getJUNTmpDir() const;
  virtual int getMajor() const;
  virtual int getMinor() const;
  virtual std::string getFullBuildStr() const;
  virtual std::string getProductName() const;

  virtual void setProductName(const std::string& name);
  virtual void setAppRoots(const std::vector<std::string>& roots);
  virtual void setTmpDir(const std::string& dir);
  // Overrides the tool version; a full build string of "" keeps "MAJOR.MINOR".
  virtual void setVersion(int major, int minor, const std::string& fullBuild = "");

  virtual unsigned long long getMaxMetadataSize() const;
  virtual void setMaxMetadataSize(unsigned long long bytes);
  virtual unsigned getMaxCompressionRatio() const;
  virtual void setMaxCompressionRatio(unsigned ratio);
  virtual unsigned getCatalogWorkers() const;
  virtual void setCatalogWorkers(unsigned workers);

  // The process-wide environment. setInstance does not take ownership; null
  // restores the default.
  static HUTEnv& instance();
  static void setInstance(HUTEnv* env);

 private:
  bool rootsSet_ = false;
  std::vector<std::string> roots_;
  std::string tmpDir_;
  int major_;
  int minor_;
  std::string fullBuild_;
  std::string productName_;
  unsigned long long maxMetadataSize_ = 64ull << 20;
  unsigned maxCompressionRatio_ = 200;
  bool catalogWorkersSet_ = false;
  unsigned catalogWorkers_ = 0;
};

#endif
