#include "support/RepoBuilder.h"

#include <cstdio>

#include "host/HUTPathUtils.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

namespace zr_test {

namespace {

std::string quoted(const std::string& s) { return "\"" + s + "\""; }

bool isChosen(const std::string& chosen, const std::string& key) {
  return ("," + chosen + ",").find("," + key + ",") != std::string::npos;
}

std::string intentJson(const std::string& chosen) {
  if (chosen.empty()) return "";
  std::string body;
  for (const char* key : {"dataCenter", "embedded", "externalHost", "serverManaged"}) {
    if (!body.empty()) body += ",";
    body += quoted(key) + ":{\"value\":" + quoted(isChosen(chosen, key) ? "true" : "false") +
            ",\"explicit\":\"true\"}";
  }
  return ",\"designIntent\":{" + body + "}";
}

std::string metadataJson(const RepoPlatform& p) {
  std::string json =
      "{\"vendor\":" + quoted(p.vendor) + ",\"boardId\":" + quoted(p.board) + ",\"name\":" + quoted(p.name) +
      ",\"versionMajor\":" + quoted(std::to_string(p.versionMajor)) +
      ",\"versionMinor\":" + quoted(std::to_string(p.versionMinor)) +
      ",\"platformState\":" + quoted(p.state) +
      ",\"unifiedPlatform\":" + quoted(p.unified ? "true" : "false") + intentJson(p.designIntent);
  if (!p.hostInterface.empty()) json += ",\"hostInterface\":" + quoted(p.hostInterface);
  if (!p.boardPart.empty())
    json += ",\"board\":{\"name\":" + quoted(p.board) + ",\"boardPart\":" + quoted(p.boardPart) + "}";
  if (!p.part.empty())
    json += ",\"devices\":[{\"name\":\"fpga0\",\"type\":\"fpga\",\"fpgaPart\":" + quoted(p.part) +
            ",\"core\":{\"name\":\"core0\"}}]";
  if (!p.metaJson.empty()) json += ",\"files\":[{\"type\":\"META_JSON\",\"name\":\"meta.json\"}]";
  return json + "}";
}

std::string softwareText(const RepoPlatform& p) {
  if (p.runtimes.empty() && p.includePaths.empty()) return spfmText(p.name + "_sw");
  return "<?xml version=\"1.0\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\" teq:name=\"" +
         p.name +
         "_sw\" teq:version=\"1.0\">\n  <teq:description>sw</teq:description>\n"
         "  <teq:systemConfigurations teq:defaultConfiguration=\"linux_cfg\">\n"
         "    <teq:configuration teq:name=\"linux_cfg\" teq:displayName=\"Linux\"" +
         (p.runtimes.empty() ? std::string() : " teq:runtimes=\"" + p.runtimes + "\"") +
         ">\n      <teq:description>cfg</teq:description>\n"
         "      <teq:processorGroup teq:name=\"apu\" teq:displayName=\"APU\" teq:cpuType=\"cortex\">\n"
         "        <teq:os teq:name=\"linux\" teq:displayName=\"Linux\" teq:includePaths=\"" +
         p.includePaths +
         "\"/>\n      </teq:processorGroup>\n    </teq:configuration>\n"
         "  </teq:systemConfigurations>\n</teq:platform>\n";
}

}  // namespace

void writeHardwareArchive(const std::string& path, const RepoPlatform& platform) {
  const std::string ext = HUTPathUtils::getExtension(path);
  ZipMembers members = {{ext.substr(ext.empty() ? 0 : 1) + ".json", metadataJson(platform)}};
  if (!platform.metaJson.empty()) members.emplace_back("meta.json", platform.metaJson);
  writeFile(path, "");  // makes the directories
  std::remove(path.c_str());
  makeZip(path, members);
}

std::string repoZdfText(const std::string& hardwareFile, const std::string& softwareFile) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\"\n"
         "    teq:name=\"repo\" teq:version=\"1.0\" teq:schemaVersion=\"1.0\">\n"
         "  <teq:description>A repository platform</teq:description>\n"
         "  <teq:hardwarePlatforms>\n"
         "    <teq:hardwarePlatform teq:path=\"hw\" teq:name=\"" +
         hardwareFile +
         "\"/>\n"
         "  </teq:hardwarePlatforms>\n"
         "  <teq:softwarePlatforms>\n"
         "    <teq:softwarePlatform teq:path=\"sw\" teq:name=\"" +
         softwareFile +
         "\"/>\n"
         "  </teq:softwarePlatforms>\n"
         "</teq:platform>\n";
}

std::string writeRepoPlatform(const std::string& dir, const RepoPlatform& platform) {
  const std::string base = dir + "/" + platform.name + "/";
  writeHardwareArchive(base + "hw/" + platform.name + platform.archiveExt, platform);
  writeFile(base + "sw/" + platform.name + ".spfm", softwareText(platform));
  const std::string zdf = base + platform.name + ".zdf";
  writeFile(zdf, repoZdfText(platform.name + platform.archiveExt, platform.name + ".spfm"));
  return zdf;
}

}  // namespace zr_test
