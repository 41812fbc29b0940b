// Registers a generated repository of platforms in the platform manager: the
// walk, every descriptor, archive and software file read, the loose archives
// checked for duplicates. The argument is the number of platforms; the
// repository is written once per size (gen-sample's generator, scale 1).
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

#include "../tools/zr-platform/SampleGenerator.h"
#include "host/HUTFile.h"
#include "platform/HTEQPlatformMgr.h"

namespace {

class SampleRepo {
 public:
  explicit SampleRepo(int count) : dir_(HUTFile::makeTmpDir("/tmp/zr-bench-repo-")) {
    zr_cli::SampleOptions options;
    options.count = count;
    zr_cli::generateSample(dir_, options);
  }
  ~SampleRepo() { HUTFile::rmRecursive(dir_); }
  SampleRepo(const SampleRepo&) = delete;
  SampleRepo& operator=(const SampleRepo&) = delete;
  const std::string& dir() const { return dir_; }

 private:
  std::string dir_;
};

const std::string& repoOf(int count) {
  static std::map<int, std::unique_ptr<SampleRepo>> repos;
  auto& repo = repos[count];
  if (!repo) repo = std::make_unique<SampleRepo>(count);
  return repo->dir();
}

void RegisterRepo(benchmark::State& state) {
  const std::string& dir = repoOf(static_cast<int>(state.range(0)));
  unsigned registered = 0;
  for (auto _ : state) {
    HTEQPlatformMgr mgr;
    mgr.addPlatformsFromDirs({dir});
    HTEQPlatformMgr::TEQPlatformVec hardware;
    mgr.getCFAPlatforms(hardware);
    registered = mgr.getNumPlatforms() + static_cast<unsigned>(hardware.size());
  }
  state.counters["registered"] = registered;
  state.counters["platforms/s"] =
      benchmark::Counter(static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(RegisterRepo)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
