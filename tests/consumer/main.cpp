// Builds against the installed headers and library the way a host tool does,
// and checks that both kinds of entry work: a class and a C entry point.
#include <iostream>
#include <sstream>

#include "host/HEXAll.h"
#include "platform/HTEQPlatformCAPI.h"
#include "platform/JSONObjectWriter.h"
#include "platform/PlatformLoader.h"

int main() {
  teq_platform::JSONObjectWriter w;
  w.addKey("consumer", std::string("ok"));
  std::ostringstream out;
  w.write(out);
  if (out.str() != "{\n    \"consumer\": \"ok\"\n}\n") return 1;

  hteq_free_json_string(nullptr);
  try {
    teq_platform::PlatformLoader loader("/nonexistent/platform.zdf", teq_platform::PlatformLoader::Default);
    return 1;
  } catch (const HEXFileNotFoundException& e) {
    std::cout << "consumer: ok (" << e.getFileName() << " reported missing)\n";
  }
  return 0;
}
