// Phases of loading and printing one platform, on samples of four sizes. The
// argument is the gen-sample scale in quarters (1, 4, 16, 96: scales 0.25, 1,
// 4 and 24). Bytes per second refer to the JSON member. The reference parser
// and writer of the property tree run beside the library's own for comparison.
#include <benchmark/benchmark.h>

#include <boost/property_tree/json_parser.hpp>
#include <map>
#include <memory>
#include <sstream>

#include "../tools/zr-platform/SampleGenerator.h"
#include "host/HUTZip.h"
#include "json/JsonDocument.h"
#include "json/JsonTextWriter.h"
#include "loading/TEQPlatformLMX.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONObjectWriter.h"
#include "platform/PlatformLoader.h"

namespace {

// A stream that only counts what it is given, so that the text benchmarks
// measure the writers and not the growth of a string buffer.
class CountingBuf : public std::streambuf {
 public:
  std::size_t count = 0;

 protected:
  std::streamsize xsputn(const char*, std::streamsize n) override {
    count += static_cast<std::size_t>(n);
    return n;
  }
  int overflow(int c) override {
    ++count;
    return c;
  }
};

struct Sample {
  std::string zdf;
  std::string archive;
  std::string member;
};

// One generated platform per scale, made once and kept for the run.
const Sample& sample(int quarters) {
  static std::map<int, Sample> samples;
  auto it = samples.find(quarters);
  if (it != samples.end()) return it->second;
  const std::string dir = "/tmp/zr-bench-sample-q" + std::to_string(quarters);
  zr_cli::SampleOptions options;
  options.count = 1;
  options.scale = quarters / 4.0;
  Sample s;
  s.zdf = zr_cli::generateSample(dir, options).front();
  s.archive = dir + "/acme_dc/hw/acme_dc.lfa";
  HUTZip::readMember(s.archive, "lfa.json", s.member);
  return samples[quarters] = s;
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

void BM_DocumentParse(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    zr_json::Document doc;
    benchmark::DoNotOptimize(doc.parse(s.member, HTEQJSONUtils::kMaxDepth));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_ReferenceParse(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    HTEQJSONUtils::Tree tree;
    std::istringstream in(s.member);
    boost::property_tree::read_json(in, tree);
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
  const Sample& s = sample(4);
  for (auto _ : state) benchmark::DoNotOptimize(TEQPlatform::unmarshalFile(s.zdf).GetName().size());
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

// Prints the tree of a loaded platform with `print` to a counting stream.
template <class Print>
void printTree(benchmark::State& state, Print print) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  teq_platform::PlatformLoader loader(s.zdf, teq_platform::PlatformLoader::Default);
  const auto platform = loader.load();
  teq_platform::JSONObjectWriter w;
  w.writeObject(platform.get());
  for (auto _ : state) {
    CountingBuf buf;
    std::ostream out(&buf);
    print(w, out);
    benchmark::DoNotOptimize(buf.count);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

void BM_JsonText(benchmark::State& state) {
  printTree(state, [](const teq_platform::JSONObjectWriter& w, std::ostream& out) { w.write(out); });
}

void BM_ReferenceText(benchmark::State& state) {
  printTree(state, [](const teq_platform::JSONObjectWriter& w, std::ostream& out) {
    boost::property_tree::write_json(out, w.getTree(), true);
  });
}

// The text the C entry point prints, made from the model without a tree.
void BM_DirectText(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  teq_platform::PlatformLoader loader(s.zdf, teq_platform::PlatformLoader::Default);
  const auto platform = loader.load();
  for (auto _ : state) {
    std::unique_ptr<char[]> text(teq_platform::platformText(*platform));
    benchmark::DoNotOptimize(text[0]);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

// Load and print as the C entry point does.
void BM_LoadAndPrint(benchmark::State& state) {
  const Sample& s = sample(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    teq_platform::PlatformLoader loader(s.zdf, teq_platform::PlatformLoader::Default);
    const auto platform = loader.load();
    std::unique_ptr<char[]> text(teq_platform::platformText(*platform));
    benchmark::DoNotOptimize(text[0]);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(s.member.size()));
}

}  // namespace

#define ZR_SCALES ->Arg(1)->Arg(4)->Arg(16)->Arg(96)->Unit(benchmark::kMillisecond)
BENCHMARK(BM_MemberRead) ZR_SCALES;
BENCHMARK(BM_DocumentParse) ZR_SCALES;
BENCHMARK(BM_JsonParse) ZR_SCALES;
BENCHMARK(BM_ReferenceParse) ZR_SCALES;
BENCHMARK(BM_ParseAndFillModel) ZR_SCALES;
BENCHMARK(BM_DescriptorParseAndValidate)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TreeBuild) ZR_SCALES;
BENCHMARK(BM_JsonText) ZR_SCALES;
BENCHMARK(BM_ReferenceText) ZR_SCALES;
BENCHMARK(BM_DirectText) ZR_SCALES;
BENCHMARK(BM_LoadAndPrint) ZR_SCALES;

BENCHMARK_MAIN();
