#ifndef TESTS_CFAXMLREADER_CFAXMLREADERTESTSUPPORT_H
#define TESTS_CFAXMLREADER_CFAXMLREADERTESTSUPPORT_H

#include <string>
#include <utility>
#include <vector>

#include "host/HUTEnv.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

class HPLPlatform;

namespace cfa_test {

// A CFA XML document assembled from its parts. Every element sits on a line of
// its own; an empty part leaves its element out. The defaults make the
// smallest valid document.
struct CfaDoc {
  std::string rootAttrs = R"(VersionMajor="1" VersionMinor="15")";
  std::string genAppInfo;  // a whole GenAppInfo element
  std::string cfaAttrs =
      R"(Vendor="v" BoardId="b" Name="n" VersionMajor="0" VersionMinor="0" Description="d")";
  std::string host;  // a whole Host element
  std::string buildAttrs;
  std::string buildBody;
  std::string designIPs;  // a whole DesignIPs element
  std::string boardAttrs = R"(Name="b" Vendor="bv" Part="p")";
  std::string boardBody = "<Images/>";
  std::string devices = R"(<Device Name="d" Type="t"><Core Name="c" Type="t" ComputeUnits="1"/></Device>)";
  std::string files;
  std::string featureRom;  // a whole FeatureRom element

  std::string text() const;
};

// A document that uses nearly every element and attribute, with values that
// tell the fields apart.
CfaDoc representativeDoc();

// The 1-based line on which `needle` first occurs in `doc`.
int lineOf(const std::string& doc, const std::string& needle);

// Writes an archive `name` in `dir` whose XML member (the extension plus
// ".xml") holds `xml`, with further members; returns its path.
std::string makeArchive(const zr_test::TempDir& dir, const std::string& xml,
                        const std::vector<std::pair<std::string, std::string>>& members = {},
                        const std::string& name = "plat.cfa");

// Builds a reader on the archive and runs parseCFA; the reader's error text in `error`.
bool readInto(const std::string& archive, HPLPlatform& platform, std::string* error = nullptr);

// Installs a tool environment with a known version for its lifetime.
class ScopedToolVersion {
 public:
  ScopedToolVersion(int major, int minor, const std::string& fullBuild) : guard_(&env_) {
    env_.setVersion(major, minor, fullBuild);
  }

 private:
  HUTEnv env_;
  zr_test::ScopedInstance<HUTEnv> guard_;
};

}  // namespace cfa_test

#endif
