// Phases of loading and printing one platform, on samples of three sizes
// (scale 1, 4 and 24 of gen-sample). Bytes per second refer to the JSON member.
#include <benchmark/benchmark.h>

#include <map>
#include <sstream>

#include "../tools/zr-platform/SampleGenerator.h"
#include "TEQPlatformLMX.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONObjectWriter.h"
#include "platform/PlatformLoader.h"

namespace {

struct Sample {
  std::string zdf;
  std::string archive;
  std::string member;
};

// One generated platform per scale, made once and kept for the run.
const Sample& sample(int scale) {
  static std::map<int, Sample> samples;
  auto it = samples.find(scale);
  if (it != samples.end()) return it->second;
  const std::string dir = "/tmp/zr-bench-sample-" + std::to_string(scale);
  zr_cli::SampleOptions options;
  options.count = 1;
  options.scale = scale;
  Sample s;
  s.zdf = zr_cli::generateSample(dir, options).front();
  s.archive = dir + "/acme_dc/hw/acme_dc.lfa";
  HUTZip::readMember(s.archive, "lfa.json", s.member);
  return samples[scale] = s;
}

void BM_MemberRead(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::string content;
    HUTZip::readMember(s.archive, "lfa.json", content);
    benchmark::DoNotOptimize(content.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_JsonParse(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    HTEQJSONUtils::Tree tree;
    HTEQJSONUtils::readJSON(s.member, tree, "bench");
    benchmark::DoNotOptimize(tree.size());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_ParseAndFillModel(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    HPLPlatform p;
    HTEQCfaJsonReader(&p).parseJsonString(s.member);
    benchmark::DoNotOptimize(&p);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_DescriptorParseAndValidate(benchmark::State& state) {
  const Sample& s = sample(1);
  for (auto _ : state) benchmark::DoNotOptimize(TEQPlatform::unmarshalFile(s.zdf).name.size());
}

void BM_TreeBuild(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  teq_platform::PlatformLoader loader(s.zdf, teq_platform::PlatformLoader::Default);
  const auto platform = loader.load();
  for (auto _ : state) {
    teq_platform::JSONObjectWriter w;
    w.writeObject(platform.get());
    benchmark::DoNotOptimize(w.getTree().size());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_JsonText(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  teq_platform::PlatformLoader loader(s.zdf, teq_platform::PlatformLoader::Default);
  const auto platform = loader.load();
  teq_platform::JSONObjectWriter w;
  w.writeObject(platform.get());
  for (auto _ : state) {
    std::ostringstream out;
    w.write(out);
    benchmark::DoNotOptimize(out.str().size());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_LoadAndPrint(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    teq_platform::PlatformLoader loader(s.zdf, teq_platform::PlatformLoader::Default);
    const auto platform = loader.load();
    teq_platform::JSONObjectWriter w;
    w.writeObject(platform.get());
    std::ostringstream out;
    w.write(out);
    benchmark::DoNotOptimize(out.str().size());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

}  // namespace

BENCHMARK(BM_MemberRead)->Arg(1)->Arg(4)->Arg(24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JsonParse)->Arg(1)->Arg(4)->Arg(24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseAndFillModel)->Arg(1)->Arg(4)->Arg(24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DescriptorParseAndValidate)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TreeBuild)->Arg(1)->Arg(4)->Arg(24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JsonText)->Arg(1)->Arg(4)->Arg(24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadAndPrint)->Arg(1)->Arg(4)->Arg(24)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
