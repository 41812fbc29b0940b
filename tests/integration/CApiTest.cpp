#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <string>

#include "support/TestSupport.h"

using namespace zr_test;

namespace {

using GetJson = char* (*)(const char*);
using FreeJson = void (*)(char*);

// The library as a host loads it: by path, symbols looked up by their C names.
class CApi : public ::testing::Test {
 protected:
  void SetUp() override {
    lib_ = dlopen(ZR_TEST_LIB_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(lib_, nullptr) << dlerror();
    full_ = reinterpret_cast<GetJson>(dlsym(lib_, "hteq_get_platform_json"));
    short_ = reinterpret_cast<GetJson>(dlsym(lib_, "hteq_get_short_platform_json"));
    free_ = reinterpret_cast<FreeJson>(dlsym(lib_, "hteq_free_json_string"));
    ASSERT_NE(full_, nullptr);
    ASSERT_NE(short_, nullptr);
    ASSERT_NE(free_, nullptr);
  }
  void TearDown() override {
    if (lib_) dlclose(lib_);
  }
  void* lib_ = nullptr;
  GetJson full_ = nullptr;
  GetJson short_ = nullptr;
  FreeJson free_ = nullptr;
};

// What the library prints on standard error while `f` runs: where a C host
// that installs no message sink of its own finds the reasons.
std::string stderrOf(const std::function<void()>& f) {
  std::FILE* capture = std::tmpfile();
  std::fflush(stderr);
  const int saved = ::dup(2);
  ::dup2(::fileno(capture), 2);
  f();
  std::fflush(stderr);
  ::dup2(saved, 2);
  ::close(saved);
  std::rewind(capture);
  std::string text;
  for (int c; (c = std::fgetc(capture)) != EOF;) text += static_cast<char>(c);
  std::fclose(capture);
  return text;
}

}  // namespace

TEST_F(CApi, OnlyTheThreeEntryPointsAndPublicClassesAreExported) {
  // Internal helpers stay hidden.
  EXPECT_EQ(dlsym(lib_, "_ZN6zr_xml9schemaForEPKcS1_m"), nullptr);
}

TEST_F(CApi, FreeAcceptsNull) { free_(nullptr); }

TEST_F(CApi, EveryFailureGivesNullAndItsReasonAsAMessage) {
  TempDir dir;
  const std::string missing = dir.file("nothing.zdf");
  const std::string bad = dir.write("bad.zdf", "<teq:platform");
  const std::string fifo = dir.file("fifo.zdf");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const struct {
    const char* what;
    const char* file;
    std::string message;  // in what the library's default sink prints
  } cases[] = {
      {"missing descriptor", missing.c_str(),
       "[platform 74-60] Failed to load the platform: the file '" + missing},
      {"invalid descriptor", bad.c_str(), "[platform 74-9] Failed to parse the platform descriptor '" + bad},
      // Never opened for reading, which would wait for a writer forever.
      {"fifo descriptor", fifo.c_str(), "[platform 74-9] Failed to parse the platform descriptor '" + fifo},
      {"null path", nullptr, "[platform 74-60] Failed to load the platform: no platform file was given"},
  };
  for (const auto& c : cases) {
    for (GetJson entry : {full_, short_}) {
      SCOPED_TRACE(c.what);
      char* result = reinterpret_cast<char*>(1);
      const std::string err = stderrOf([&] { result = entry(c.file); });
      EXPECT_EQ(result, nullptr);
      EXPECT_NE(err.find("ERROR: " + c.message), std::string::npos) << err;
    }
  }
}

TEST_F(CApi, SoftwareOnlyPlatformWritesItsSoftwareObject) {
  TempDir dir;
  const std::string file = dir.write("sw/a.spfm", spfmText());
  char* text = full_(file.c_str());
  ASSERT_NE(text, nullptr);
  const std::string json(text);
  free_(text);
  EXPECT_EQ(json.find("\"swFile\""), std::string::npos);
  EXPECT_EQ(json.find("\"file\""), std::string::npos);
  EXPECT_NE(json.find("    \"hardware\": \"false\",\n"), std::string::npos);
  EXPECT_NE(json.find("    \"softwarePlatform\": {\n"), std::string::npos);
  char* brief = short_(file.c_str());
  ASSERT_NE(brief, nullptr);
  // Nothing of the descriptor is known, so the short document is empty.
  EXPECT_STREQ(brief, "{\n}\n");
  free_(brief);
}
