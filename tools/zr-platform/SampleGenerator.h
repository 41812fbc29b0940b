#ifndef TOOLS_ZR_PLATFORM_SAMPLEGENERATOR_H
#define TOOLS_ZR_PLATFORM_SAMPLEGENERATOR_H

#include <ostream>
#include <string>
#include <vector>

namespace zr_cli {

struct SampleOptions {
  // How many platforms; the first five show the kinds of platform (see below),
  // the rest are more platforms of the first kind.
  int count = 5;
  // Grows every list of each platform's metadata; 1 gives a member of about
  // 430 KB (100 bus interfaces, 20 clocks, 8 memories, 40 ports, 40 files,
  // 50 IP parameters).
  double scale = 1.0;
  // Also writes platforms whose support verdicts differ, named acme_policy_*:
  // unified platforms of this tool's year, the year before, three years back
  // and the year after, one not unified, one before synthesis, one old one
  // with an extended warranty for this release, and the two named by the
  // sample exception list (data/achromatic.json).
  bool policy = false;
};

// Writes a sample repository into `dir`, deterministically:
//   <name>/<name>.zdf, hw/<name>.lfa, sw/<name>.spfm   a data-centre platform
//   (JSON metadata), an embedded platform whose archive is a .cfa with XML
//   metadata, a platform with two reconfigurable partitions, a platform with
//   emulation metadata inside its archive, and a lone hardware archive; then
//   further data-centre platforms up to `count`.
// Returns the descriptors and archives written, one per platform.
std::vector<std::string> generateSample(const std::string& dir, const SampleOptions& options);

}  // namespace zr_cli

#endif
