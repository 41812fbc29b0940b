#include "platform/HTEQEnv.h"

#include <mutex>

#include "host/HSTStringUtils.h"
#include "host/HUTEnv.h"

bool HTEQEnv::isRunningAsHollinUnitTest() {
  static const bool unitTest = HUTEnv::instance().isSet("HOLLIN_UNIT_TEST");
  return unitTest;
}

std::string HTEQEnv::getProductName() {
  // Worked out on the first call, which may come from several loading threads at once.
  static std::mutex mutex;
  static std::string name;
  const std::lock_guard<std::mutex> lock(mutex);
  if (name.empty())
    name = computeProductName(HUTEnv::instance().getJUNAppRoot(), isRunningAsHollinUnitTest());
  return name;
}

std::string HTEQEnv::computeProductName(const std::string& appRoot, bool unitTest) {
  const std::string root = HSTStringUtils::toLower(appRoot);
  std::string best;
  std::size_t bestPos = 0;
  for (const char* candidate : {"selbrook", "teq", "delmar", "morwen"}) {
    if (unitTest && std::string(candidate) == "teq") continue;
    const std::size_t pos = root.rfind(candidate);
    // Ties go to the later name of the list.
    if (pos != std::string::npos && (best.empty() || pos >= bestPos)) {
      best = candidate;
      bestPos = pos;
    }
  }
  if (!best.empty()) return best;
  return unitTest ? "selbrook" : "unknown";
}
