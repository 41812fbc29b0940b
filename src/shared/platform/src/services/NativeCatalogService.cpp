#include "platform/NativeCatalogService.h"

#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <exception>
#include <memory>
#include <sstream>
#include <thread>
#include <vector>

#include "ZrFileAccess.h"
#include "host/HUTConsole.h"
#include "host/HUTEnv.h"
#include "json/JsonDocument.h"
#include "loading/ReportOnlyLoad.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/NativePlatformRepoService.h"
#include "platform/PlatformLoader.h"
#include "repository/SupportPolicy.h"
#include "services/OrderedWork.h"

namespace teq {
namespace platform {

namespace {

const char* boolText(bool value) { return value ? "true" : "false"; }

std::string clockCount(const HTEQHardwarePlatform& hardware) {
  HTEQHardwarePlatform::TEQSystemClockVec clocks;
  hardware.getSystemClocks(clocks);
  return std::to_string(clocks.size());
}

// "<CFA>/NAME" for the hardware platform's HPFM file, or "" when it has none.
std::string hpfmEntry(const HTEQHardwarePlatform& hardware) {
  const std::string name = hardware.getFile("HPFM");
  return name.empty() ? std::string() : "<CFA>/" + name;
}

std::string writePretty(const NativeCatalogService::Tree& tree) {
  std::ostringstream out;
  boost::property_tree::write_json(out, tree, true);
  return out.str();
}

NativeCatalogService::Tree partitionTree(const HTEQReconfigurablePartition& partition) {
  NativeCatalogService::Tree entry;
  entry.put("platformHwFile", partition.getHardwarePlatformFile());
  if (const HTEQHardwarePlatform* hw = partition.getHardwarePlatform()) {
    const std::string hpfm = hpfmEntry(*hw);
    if (!hpfm.empty()) entry.put("hpfmFile", hpfm);
    entry.put("systemClockCount", clockCount(*hw));
  }
  entry.put("platformHwEmuFile", partition.getHardwareEmulationPlatformFile());
  if (const HTEQHardwarePlatform* emu = partition.getHardwareEmulationPlatform()) {
    const std::string hpfm = hpfmEntry(*emu);
    if (!hpfm.empty()) entry.put("hwEmuHpfmFile", hpfm);
    entry.put("hwEmuSystemClockCount", clockCount(*emu));
  }
  return entry;
}

// A loader of `file` that has loaded what the report of getPlatformInfo_
// reads. The hardware metadata is read without the parts no report shows,
// unless the support policy may look into the platform's document: through
// the exception list, when an entry names this product, or through the
// extended warranty, when the hardware platform has extension metadata.
// Such a platform is loaded again in full.
std::unique_ptr<teq_platform::PlatformLoader> reportLoader(const std::string& file, bool detailed) {
  using teq_platform::PlatformLoader;
  auto loader = std::make_unique<PlatformLoader>(file, PlatformLoader::Default);
  if (detailed && support_policy::exceptionListNamesProduct()) return loader;
  std::shared_ptr<HTEQPlatform> platform;
  {
    teq_platform::ReportOnlyLoad partial;
    platform = loader->load();
  }
  const HTEQHardwarePlatform* hw = platform ? platform->getHardwarePlatform() : nullptr;
  if (detailed && hw != nullptr && !hw->getExtMetaJsonAsString().empty())
    loader = std::make_unique<PlatformLoader>(file, PlatformLoader::Default);
  return loader;
}

// How many threads load the platforms of a catalog, the calling thread
// included: the environment's setting, else one per processor up to
// kAutoWorkers. One means the calling thread alone.
constexpr unsigned kAutoWorkers = 4;
constexpr unsigned kMaxWorkers = 16;

unsigned catalogWorkers() {
  unsigned workers = HUTEnv::instance().getCatalogWorkers();
  if (workers == 0) workers = std::clamp(std::thread::hardware_concurrency(), 1u, kAutoWorkers);
  return std::min(workers, kMaxWorkers);
}

}  // namespace

bool NativeCatalogService::getPlatformInfo_(teq_platform::PlatformLoader* loader, Tree& tree,
                                            bool detailed) const {
  if (loader == nullptr) return false;
  std::shared_ptr<HTEQPlatform> platform = loader->load();
  // The report reads the hardware platform throughout: without one the
  // platform counts as not loaded.
  if (!platform || platform->getHardwarePlatform() == nullptr) {
    HUTConsole::out("Error: failed to load platform\n");
    return false;
  }
  if (platform->isHidden()) return false;
  const HTEQHardwarePlatform& hw = *platform->getHardwarePlatform();
  const HTEQDesignIntentStorage& intent = hw.getDesignIntent();
  // Keys go in through the dotted put: none of them holds a dot.
  tree.put("baseName", platform->getPlatformBaseName());
  tree.put("version", platform->getVersion());
  tree.put("type", platform->getTypeString());
  tree.put("dataCenter", boolText(intent.getDataCenter()));
  tree.put("embedded", boolText(intent.getEmbedded()));
  tree.put("externalHost", boolText(intent.getExternalHost()));
  tree.put("serverManaged", boolText(intent.getServerManaged()));
  tree.put("platformState", hw.getPlatformState());
  tree.put("usesPR", boolText(hw.usesPR()));
  tree.put("platformFile", platform->getPlatformFile());
  if (!detailed) return true;

  tree.put("platformHwFile", platform->getHardwarePlatformFile());
  tree.put("platformHwEmuFile", platform->getHardwareEmuPlatformFile());
  if (platform->hasReconfigurablePartitions()) {
    Tree partitions;
    for (const HTEQReconfigurablePartition* partition : platform->getReconfigurablePartitions()) {
      if (partition != nullptr)
        partitions.push_back(std::make_pair(std::string(), partitionTree(*partition)));
    }
    tree.add_child("reconfigurablePartitions", partitions);
  }
  tree.put("platformSwFile", platform->getSoftwarePlatformFile());
  const std::string hpfm = hpfmEntry(hw);
  if (!hpfm.empty()) tree.put("hpfmFile", hpfm);
  tree.put("systemClockCount", clockCount(hw));
  tree.put("partArchitecture", hw.getFpgaPart());
  std::string reason;
  const bool warranty = isUnderWarranty(loader, reason, std::string());
  tree.put("warranty", boolText(warranty));
  if (!reason.empty()) tree.put("warrantyReason", reason);
  tree.put("hardware", boolText(platform->supportsHardware()));
  tree.put("hardwareEmulation", boolText(platform->supportsHWEmulation()));
  tree.put("twoHwEmuBd", boolText(platform->supportsTwoHwEmuBd()));
  tree.put("softwareEmulation", boolText(platform->supportsSWEmulation()));
  return true;
}

std::string NativeCatalogService::getAsJsonStr(teq_platform::PlatformLoader* loader, bool detailed,
                                               bool /*unused*/) const {
  Tree tree;
  if (!getPlatformInfo_(loader, tree, detailed)) return std::string();
  return writePretty(tree);
}

std::string NativeCatalogService::getAsJsonStr(const std::string& file, bool detailed, bool unused) const {
  teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
  return getAsJsonStr(&loader, detailed, unused);
}

std::string NativeCatalogService::getAllAsJsonStr(const std::string& pathList, bool detailed,
                                                  bool /*unused*/) const {
  return getAllAsJsonStr(pathList, detailed, Progress());
}

std::string NativeCatalogService::getAllAsJsonStr(const std::string& pathList, bool detailed,
                                                  const Progress& progress) const {
  // The text is what the tree writer prints for {"platforms": [entry...]},
  // written one entry at a time: only the platforms in flight are ever held,
  // and the text grows by their entries alone.
  std::string text = "{\n    \"platforms\": ";
  std::size_t written = 0;
  const auto append = [&](const std::string& entryText) {
    text += written++ == 0 ? "[\n" : ",\n";
    text.append(8, ' ');
    text += entryText;
  };
  // One platform's entry, as an array item two levels down; false when the
  // platform is left out.
  const auto entryOf = [this, detailed](const std::string& file, std::string& entryText) {
    Tree entry;
    // The descriptor's reader, the loader and the report look at the same
    // files: each path is resolved once per platform.
    zr_file::PathMemo paths;
    const zr_file::PathMemo::Scope pathScope(paths);
    paths.addExisting(file);  // the walk has just met it as a regular file
    try {
      std::unique_ptr<teq_platform::PlatformLoader> loader = reportLoader(file, detailed);
      if (!getPlatformInfo_(loader.get(), entry, detailed)) return false;
    } catch (const std::exception&) {
      // A descriptor the loader refuses, or a version the policy cannot read,
      // is left out like a platform that fails to load.
      return false;
    }
    std::ostringstream out;
    boost::property_tree::json_parser::write_json_helper(out, entry, 2, true);
    entryText = out.str();
    return true;
  };
  // Progress: (0, total) first, then the count done before each further
  // platform and once at the end.
  std::size_t done = 0;
  const auto report = [&](std::size_t total) {
    if (progress && done > 0) progress(done, total);
  };
  const unsigned workers = catalogWorkers();
  if (workers <= 1) {
    std::vector<std::string> files;
    NativePlatformRepoService().getZdfFiles(std::string(), pathList, files);
    if (progress) progress(done, files.size());
    std::string entryText;
    for (const std::string& file : files) {
      report(files.size());
      ++done;
      if (entryOf(file, entryText)) append(entryText);
    }
    report(files.size());
  } else {
    // The workers start on the first platforms while this thread walks the
    // repository. The entries, messages and console words come back here in
    // the walk's order, once the walk is done, as a loop over the files
    // would have produced them.
    OrderedWork work(workers, [&](const std::string& file, OrderedWork::Result& result) {
      result.included = entryOf(file, result.text);
    });
    NativePlatformRepoService().forEachZdfFile(std::string(), pathList,
                                               [&](const std::string& file) { work.add(file); });
    const std::size_t total = work.close();
    if (progress) progress(done, total);
    OrderedWork::Result result;
    while (work.next(result)) {
      report(total);
      ++done;
      if (result.output) result.output->replay();
      if (result.error) std::rethrow_exception(result.error);
      if (result.included) append(result.text);
    }
    report(total);
  }
  // The tree writer prints a childless node as an empty value.
  text += written == 0 ? "\"\"" : "\n    ]";
  text += "\n}\n";
  return text;
}

std::string NativeCatalogService::getValue(teq_platform::PlatformLoader* loader,
                                           const std::string& keyPath) const {
  if (loader == nullptr || keyPath.empty()) return std::string();
  const std::string report = getAsJsonStr(loader, true, true);
  if (report.empty()) return std::string();
  Tree tree;
  zr_json::parseTree(report, tree, 64);
  const Tree& constTree = tree;
  boost::optional<const Tree&> node = constTree.get_child_optional(Tree::path_type(keyPath, '.'));
  if (!node) {
    HUTConsole::out("error: key path '" + keyPath + "' doens't exist\n");
    return std::string();
  }
  return node->empty() ? node->data() : std::string();
}

std::string NativeCatalogService::getValue(const std::string& file, const std::string& keyPath) const {
  teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
  return getValue(&loader, keyPath);
}

bool NativeCatalogService::isPreSynthPlatform(teq_platform::PlatformLoader* loader) const {
  if (loader == nullptr) {
    HUTConsole::out("Error: failed to acquire a platform loader.\n");
    return false;
  }
  std::shared_ptr<HTEQPlatform> platform = loader->load();
  if (!platform) {
    HUTConsole::out("Error: failed to load platform.\n");
    return false;
  }
  const HTEQHardwarePlatform* hw = platform->getHardwarePlatform();
  if (hw == nullptr) {
    HUTConsole::out("Error: failed to load the hardware platform.\n");
    return false;
  }
  return hw->getState() == HTEQHardwarePlatform::pre_synth;
}

std::string NativeCatalogService::getCompilerVersion_() const {
  if (!testCompilerVersion_.empty()) return testCompilerVersion_;
  const HUTEnv& env = HUTEnv::instance();
  return std::to_string(env.getMajor()) + "." + std::to_string(env.getMinor());
}

}  // namespace platform
}  // namespace teq
