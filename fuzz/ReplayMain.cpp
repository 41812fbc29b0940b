// Runs one fuzz target over files, without libFuzzer: every regular file of
// each directory given (in name order) and every file given by name is handed
// to LLVMFuzzerTestOneInput once. The test build links this driver with each
// target, so that every seed and every regression input runs in the ordinary
// test command, under GCC and under the sanitizers. A target that finds a fault
// aborts or trips a sanitizer; an input that cannot be read, or a run with no
// input at all, fails here.
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

namespace fs = std::filesystem;

bool isRegular(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// The files an argument names: a directory's regular files in name order, or
// the argument itself. A directory that does not exist names nothing, so that
// an optional regression directory may be given.
std::vector<std::string> inputsOf(const std::string& arg) {
  std::vector<std::string> out;
  std::error_code ec;
  if (fs::is_directory(arg, ec)) {
    for (const auto& entry : fs::directory_iterator(arg, ec)) out.push_back(entry.path().string());
    std::sort(out.begin(), out.end());
  } else if (fs::exists(arg, ec)) {
    out.push_back(arg);
  }
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize && LLVMFuzzerInitialize(&argc, &argv) != 0) {
    std::fprintf(stderr, "replay: the target's initialisation failed\n");
    return 1;
  }
  std::size_t ran = 0;
  for (int i = 1; i < argc; ++i) {
    for (const std::string& path : inputsOf(argv[i])) {
      // Standard output may be closed by the target: report on standard error.
      if (!isRegular(path)) {
        std::fprintf(stderr, "replay: %s is not a regular file\n", path.c_str());
        return 1;
      }
      std::ifstream in(path, std::ios::binary);
      const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
      if (in.bad()) {
        std::fprintf(stderr, "replay: cannot read %s\n", path.c_str());
        return 1;
      }
      std::fprintf(stderr, "replay: %s (%zu bytes)\n", path.c_str(), bytes.size());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++ran;
    }
  }
  if (ran == 0) {
    std::fprintf(stderr, "replay: no input found\n");
    return 1;
  }
  std::fprintf(stderr, "replay: %zu inputs, no finding\n", ran);
  return 0;
}
