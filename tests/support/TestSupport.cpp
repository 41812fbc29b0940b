#include "support/TestSupport.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = boost::filesystem;

namespace zr_test {

TempDir::TempDir() {
  const char* base = std::getenv("TMPDIR");
  fs::path p = fs::path(base && *base ? base : "/tmp") / fs::unique_path("zr-test-%%%%-%%%%-%%%%");
  fs::create_directories(p);
  path_ = fs::canonical(p).string();
}

TempDir::~TempDir() {
  boost::system::error_code ec;
  // Make everything removable again, in case a test took permissions away.
  for (fs::recursive_directory_iterator it(path_, ec), end; !ec && it != end; it.increment(ec))
    fs::permissions(it->path(), fs::owner_all | fs::add_perms, ec);
  fs::remove_all(path_, ec);
}

std::string TempDir::file(const std::string& relative) const { return path_ + "/" + relative; }

std::string TempDir::write(const std::string& relative, const std::string& content) const {
  const std::string p = file(relative);
  writeFile(p, content);
  return p;
}

void writeFile(const std::string& path, const std::string& content) {
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << content;
  if (!out) throw std::runtime_error("cannot write " + path);
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

ScopedEnvVar::ScopedEnvVar(const std::string& name, const char* value) : name_(name) {
  const char* old = std::getenv(name.c_str());
  had_ = old != nullptr;
  if (had_) old_ = old;
  if (value)
    ::setenv(name.c_str(), value, 1);
  else
    ::unsetenv(name.c_str());
}

ScopedEnvVar::~ScopedEnvVar() {
  if (had_)
    ::setenv(name_.c_str(), old_.c_str(), 1);
  else
    ::unsetenv(name_.c_str());
}

GuardedFifo::GuardedFifo(const std::string& path, int seconds) {
  if (::mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("cannot make the FIFO " + path);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  guard_ = std::thread([this, path, deadline] {
    while (!stop_) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      if (std::chrono::steady_clock::now() < deadline) continue;
      // Succeeds only while a reader has the FIFO open; closing it ends that reader's stream.
      const int fd = ::open(path.c_str(), O_WRONLY | O_NONBLOCK);
      if (fd >= 0) ::close(fd);
    }
  });
}

GuardedFifo::~GuardedFifo() {
  stop_ = true;
  guard_.join();
}

}  // namespace zr_test

namespace zr_test {

std::string zdfText(const std::string& hardwareContent, const std::string& hardwareAttrs,
                    const std::string& description) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\"\n"
         "    teq:name=\"board_a\" teq:version=\" 1.10 \" teq:schemaVersion=\"1.0\">\n"
         "  <teq:description>" +
         description +
         "</teq:description>\n"
         "  <teq:hardwarePlatforms " +
         hardwareAttrs + ">\n" + hardwareContent +
         "  </teq:hardwarePlatforms>\n"
         "  <teq:softwarePlatforms>\n"
         "    <teq:softwarePlatform teq:path=\"sw\" teq:name=\"a.spfm\"/>\n"
         "  </teq:softwarePlatforms>\n"
         "</teq:platform>\n";
}

std::string zdfHw(const std::string& path, const std::string& name) {
  return "    <teq:hardwarePlatform teq:path=\"" + path + "\" teq:name=\"" + name + "\"/>\n";
}

std::string zdfEmu(const std::string& path, const std::string& name) {
  return "    <teq:hwEmuPlatform teq:path=\"" + path + "\" teq:name=\"" + name + "\"/>\n";
}

}  // namespace zr_test

namespace zr_test {

std::string spfmText(const std::string& name) {
  return "<?xml version=\"1.0\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\" teq:name=\"" +
         name +
         "\" teq:version=\"1.0\">\n"
         "  <teq:description>Software of the test platform</teq:description>\n"
         "  <teq:systemConfigurations teq:defaultConfiguration=\"linux_cfg\">\n"
         "    <teq:configuration teq:name=\"linux_cfg\" teq:displayName=\"Linux\">\n"
         "      <teq:description>Linux on the application cores</teq:description>\n"
         "      <teq:processorGroup teq:name=\"apu\" teq:displayName=\"APU\" teq:cpuType=\"cortex\">\n"
         "        <teq:os teq:name=\"linux\" teq:displayName=\"Linux\"/>\n"
         "      </teq:processorGroup>\n"
         "    </teq:configuration>\n"
         "  </teq:systemConfigurations>\n"
         "</teq:platform>\n";
}

}  // namespace zr_test

namespace zr_test {

std::string lfaJson(const std::string& extra, const std::string& name) {
  return "{\n"
         "  \"vendor\": \"acme\", \"boardId\": \"card\", \"name\": \"" +
         name +
         "\", \"versionMajor\": \"3\", \"versionMinor\": \"1\",\n"
         "  \"usesPR\": \"true\", \"hostArchitecture\": \"x86_64\",\n"
         "  \"devices\": [{\"name\": \"fpga0\", \"type\": \"8\", \"fpgaPart\": "
         "\"tzq9kp:ptzq9kp:pk676:-2:e\",\n"
         "               \"numSLRs\": \"2\", \"core\": {\"name\": \"OCL\", \"numComputeUnits\": \"60\"}}],\n"
         "  \"memories\": [{\"name\": \"bank0\", \"type\": \"ddr4\", \"size\": \"16GB\", \"lowAddress\": "
         "\"4096\"}],\n"
         "  \"systemClocks\": [{\"name\": \"a\", \"id\": \"3\"}, {\"name\": \"b\", \"id\": \"7\", "
         "\"default\": "
         "\"TRUE\"}],\n"
         "  \"busInterfaces\": [{\"name\": \"S_AXI\", \"mode\": \"slave\", \"typeRef\": \"aximm\", "
         "\"dataWidth\": "
         "\"512x\",\n"
         "                     \"addressSegments\": [{\"baseName\": \"bank0\", \"index\": \"2\"}]}],\n"
         "  \"nocConnectivity\": [{\"instRef\": \"noc0\", \"busInterfaces\": [{\"name\": \"M00\"}]}]" +
         extra + "\n}\n";
}

}  // namespace zr_test
