// zr_hostile_loads DIR [COUNT]: writes small inputs whose load cost used to
// grow much faster than their output, for measuring by hand with
// /usr/bin/time -v and valgrind --tool=callgrind (see bench/README.md):
//
//   DIR/repeat/json.lfa   a JSON member whose file list names one emulation XML
//                         member, one emulation JSON member and one hpfm member
//                         COUNT times each (default 500)
//   DIR/repeat/xml.cfa    the same through the XML member
//   DIR/parts/parts.zdf   a descriptor with COUNT partitions (default 1000), all
//                         naming hw/shell.lfa (hardware and emulation) and a
//                         software file
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "host/HUTFile.h"
#include "host/HUTZip.h"

namespace {

// An emulation document with many files: it deflates to little, parses slowly.
std::string emulationXml(int files) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root VersionMajor=\"1\" VersionMinor=\"0\">\n"
      "<Emulations><Emulation Name=\"hw_emu\"><Files>\n";
  for (int i = 0; i < files; ++i)
    text += "<File Type=\"" + std::string(i == 0 ? "EMU_HPFM" : "TOP_BD") + "\" Name=\"emu/f" +
            std::to_string(i) + ".bd\"/>\n";
  return text + "</Files></Emulation></Emulations>\n</Root>\n";
}

std::string emulationJson(int files) {
  std::string text = "{\"emulations\": [{\"name\": \"hw_emu\", \"files\": [\n";
  for (int i = 0; i < files; ++i)
    text += std::string(i ? "," : "") + "{\"type\": \"TOP_BD\", \"name\": \"emu/f" + std::to_string(i) +
            ".bd\"}\n";
  return text + "]}]}\n";
}

std::string hpfm(int interfaces) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kp:repository xmlns:kp=\"urn:teq:hpfm\" kp:name=\"r\" "
      "kp:library=\"l\" kp:version=\"1.0\" kp:vendor=\"acme\">\n<kp:component kp:name=\"shell\" "
      "kp:library=\"l\" kp:version=\"1.0\" kp:vendor=\"acme\" kp:type=\"platform\" kp:BRAM=\"1\" "
      "kp:DSP=\"1\" kp:FF=\"1\" kp:LUT=\"1\">\n<kp:platformInfo>"
      "<kp:deviceInfo kp:architecture=\"a\" kp:device=\"d\" kp:package=\"p\" kp:speedGrade=\"-1\"/>"
      "<kp:description>shell</kp:description><kp:systemClocks kp:defaultClock=\"0\"/></kp:platformInfo>\n";
  for (int i = 0; i < interfaces; ++i)
    text += "<kp:busInterface kp:name=\"S" + std::to_string(i) + "\" kp:memport=\"M_AXI\"/>\n";
  return text + "</kp:component>\n</kp:repository>\n";
}

std::string jsonMember(int count) {
  std::string files;
  for (int i = 0; i < count; ++i)
    files += std::string(i ? "," : "") +
             "{\"type\": \"EMU_XML\", \"name\": \"emu/emu.xml\"}, {\"type\": \"EMU_JSON\", \"name\": "
             "\"emu/emu.json\"}, {\"type\": \"HPFM\", \"name\": \"shell.hpfm\"}\n";
  return "{\"vendor\": \"acme\", \"boardId\": \"card\", \"name\": \"shell\", \"versionMajor\": \"1\", "
         "\"versionMinor\": \"0\", \"devices\": [{\"name\": \"fpga0\", \"type\": \"8\", \"core\": {\"name\": "
         "\"OCL\"}}],\n\"files\": [" +
         files + "]}\n";
}

std::string xmlMember(int count) {
  std::string files;
  for (int i = 0; i < count; ++i)
    files += "<File Type=\"EMU_XML\" Name=\"emu/emu.xml\"/><File Type=\"HPFM\" Name=\"shell.hpfm\"/>\n";
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root VersionMajor=\"1\" VersionMinor=\"15\">\n"
         "<CFA Vendor=\"acme\" BoardId=\"card\" Name=\"shell\" VersionMajor=\"1\" VersionMinor=\"0\" "
         "Description=\"d\">\n<Build/>\n<Board Name=\"b\" Vendor=\"v\" Part=\"p\"><Images/></Board>\n"
         "<Devices><Device Name=\"d\" Type=\"t\"><Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"/></Device>"
         "</Devices>\n<Files>\n" +
         files + "</Files>\n</CFA>\n</Root>\n";
}

std::string spfm() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<teq:platform xmlns:teq=\"urn:teq:platform\" "
         "teq:vendor=\"acme\" teq:library=\"lib\" teq:name=\"sw\" teq:version=\"1.0\">\n"
         "<teq:description>sw</teq:description>\n<teq:systemConfigurations>\n<teq:configuration "
         "teq:name=\"c\" teq:displayName=\"C\">\n<teq:description>d</teq:description>\n"
         "</teq:configuration>\n</teq:systemConfigurations>\n</teq:platform>\n";
}

std::string descriptor(int partitions) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<teq:platform xmlns:teq=\"urn:teq:platform\" "
      "teq:vendor=\"acme\" teq:library=\"lib\" teq:name=\"parts\" teq:version=\"1.0\">\n"
      "<teq:description>d</teq:description>\n<teq:hardwarePlatforms teq:defaultRP=\"0\">\n";
  for (int i = 0; i < partitions; ++i)
    text += "<teq:reconfigurablePartition teq:id=\"" + std::to_string(i) +
            "\"><teq:hardwarePlatform teq:path=\"hw\" teq:name=\"shell.lfa\"/>"
            "<teq:hwEmuPlatform teq:path=\"hw\" teq:name=\"shell.lfa\"/></teq:reconfigurablePartition>\n";
  return text +
         "</teq:hardwarePlatforms>\n<teq:softwarePlatforms><teq:softwarePlatform teq:path=\"sw\" "
         "teq:name=\"sw.spfm\"/></teq:softwarePlatforms>\n</teq:platform>\n";
}

void write(const std::string& path, const std::string& text) {
  HUTFile::mkDirRecursive(path.substr(0, path.rfind('/')));
  std::ofstream(path, std::ios::binary) << text;
  std::cout << path << " " << text.size() << " bytes\n";
}

void archive(const std::string& path, const std::string& metaName, const std::string& meta) {
  HUTFile::mkDirRecursive(path.substr(0, path.rfind('/')));
  std::remove(path.c_str());
  HUTZip::writeMember(path, metaName, meta);
  HUTZip::writeMember(path, "emu/emu.xml", emulationXml(2000));
  HUTZip::writeMember(path, "emu/emu.json", emulationJson(2000));
  HUTZip::writeMember(path, "shell.hpfm", hpfm(200));
  std::cout << path << " " << HUTFile::getSize(path) << " bytes\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: zr_hostile_loads DIR [COUNT]\n";
    return 2;
  }
  const std::string dir = argv[1];
  const int count = argc > 2 ? std::atoi(argv[2]) : 0;
  try {
    archive(dir + "/repeat/json.lfa", "lfa.json", jsonMember(count > 0 ? count : 500));
    archive(dir + "/repeat/xml.cfa", "cfa.xml", xmlMember(count > 0 ? count : 500));
    archive(dir + "/parts/hw/shell.lfa", "lfa.json", jsonMember(1));
    write(dir + "/parts/sw/sw.spfm", spfm());
    write(dir + "/parts/parts.zdf", descriptor(count > 0 ? count : 1000));
  } catch (const std::exception& e) {
    std::cerr << e.what() << "\n";
    return 1;
  }
  return 0;
}
