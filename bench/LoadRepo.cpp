// zr_load_repo DIR...: loads every platform two levels below each directory
// (DIR/NAME/NAME.zdf, or a lone archive) fully through the loader, and prints
// how many loaded and how many failed.
#include <dirent.h>

#include <iostream>
#include <string>
#include <vector>

#include "platform/HTEQPlatform.h"
#include "platform/PlatformLoader.h"

namespace {

std::vector<std::string> entries(const std::string& dir) {
  std::vector<std::string> out;
  if (DIR* d = opendir(dir.c_str())) {
    while (dirent* e = readdir(d))
      if (e->d_name[0] != '.') out.push_back(dir + "/" + e->d_name);
    closedir(d);
  }
  return out;
}

bool endsWith(const std::string& s, const std::string& suffix) {
  return s.size() >= suffix.size() && s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  long loaded = 0, failed = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& platformDir : entries(argv[i])) {
      for (const auto& file : entries(platformDir)) {
        if (!endsWith(file, ".zdf") && !endsWith(file, ".lfa") && !endsWith(file, ".cfa")) continue;
        try {
          teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
          (loader.load() ? loaded : failed)++;
        } catch (const std::exception& e) {
          ++failed;
          std::cerr << file << ": " << e.what() << "\n";
        }
      }
    }
  }
  std::cout << loaded << " loaded, " << failed << " failed\n";
  return failed ? 1 : 0;
}
