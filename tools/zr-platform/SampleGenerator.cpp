#include "SampleGenerator.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLBoard.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPlatform.h"
#include "platform/HPLPort.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQSystemClock.h"
#include "platform/JSONObjectWriter.h"

namespace zr_cli {

namespace {

enum class Kind { DataCenter, Embedded, Partitioned, WithEmulation, HardwareOnly };

struct Counts {
  int busInterfaces, clocks, memories, ports, files, ipParams, nocs;
};

Counts countsFor(double scale) {
  auto n = [scale](int base) { return std::max(1, static_cast<int>(std::lround(base * scale))); };
  return Counts{n(100), n(20), n(8), n(40), n(40), n(50), n(10)};
}

std::string num(long v) { return std::to_string(v); }

// One hardware platform built through the model, as a tool chain would make it.
void fillPlatform(HPLPlatform& p, const std::string& name, Kind kind, const Counts& c, bool emulation) {
  p.setVendor("acme");
  p.setBoardId(name);
  p.setName("base");
  p.setVersionMajor(2);
  p.setVersionMinor(1);
  p.setDescription("Sample platform " + name);
  const bool embedded = kind == Kind::Embedded;
  p.setUsesPR(!embedded);
  p.setHostArch(embedded ? "aarch64" : "x86_64");
  p.setHostInterface(embedded ? "none" : "pcie");
  p.setPlatformState("impl");
  p.setGeneratedName("zr-platform gen-sample");
  p.setGeneratedVersion("1.0");
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::dataCenter, !embedded);
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::embedded, embedded);
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::externalHost, false);
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::serverManaged, !embedded);
  if (emulation) {
    p.setSupportsHWEmulation(true);
    p.setIsHWEmuPlatform(true);
  }
  p.setBRAMCount(1200);
  p.setDSPCount(6800);
  p.setLUTCount(1182000);
  p.setFFCount(2364000);

  HPLBoard& board = p.getBoard();
  board.setName("acme:" + name + ":1.0");
  board.setVendor("acme");
  board.setPart("ptzq9kp-pk676-2-e");

  HPLDevice* device = p.addDevice();
  device->setName("fpga0");
  device->setType("8");
  device->setFpgaPart("tzq9kp:ptzq9kp:pk676:-2:e");
  device->setNumSLRs(3);
  HPLCore& core = device->getCore();
  core.setName("OCL_REGION_0");
  core.setType("clc_region");
  core.setInstPath("pfm_top_i/dynamic_region");
  core.setNumComputeUnits(60);
  for (int i = 0; i < c.ports; ++i) {
    HPLPort* port = core.addPort();
    port->setName("M" + num(i) + "_AXI");
    port->setMode("master");
    port->setProtocol("AXI4");
    port->setDataWidth("512");
    port->setIdWidth("4");
    port->setAddrWidth("64");
    port->setBase("0x" + num(i) + "0000000");
    port->setRange("0x10000000");
  }

  HPLInterface* interface = p.addInterface();
  interface->setId("int1");
  interface->setName("PCIe");
  interface->setType(embedded ? "axi" : "gen3x16");

  for (int i = 0; i < c.memories; ++i) {
    HPLMemory* m = p.addMemory();
    m->setName("bank" + num(i));
    m->setType(i % 4 == 3 ? "hbm" : "ddr4");
    m->setSize("16GB");
    m->setLowestAddress(0x4000000000ULL + static_cast<unsigned long long>(i) * 0x400000000ULL);
    m->setHighestAddress(0x43FFFFFFFFULL + static_cast<unsigned long long>(i) * 0x400000000ULL);
  }
  for (int i = 0; i < c.files; ++i) {
    HPLFile* f = p.addFile(i == 0   ? "FULL_BIT"
                           : i == 1 ? "DCP"
                                    : "PRE_SYS_LINK_TCL",
                           i == 0 ? "hw/" + name + ".bit" : "scripts/step" + num(i) + ".tcl");
    f->setUsedIn("implementation");
  }
  for (int i = 0; i < c.clocks; ++i) {
    HTEQSystemClock* clock = p.addSystemClock();
    clock->setName("clk_out" + num(i));
    clock->setId(i);
    clock->setFrequency(num(100 + 50 * (i % 7)));
    clock->setPeriod("3.333");
    clock->setStatus(i % 2 ? "fixed" : "scalable");
    if (i == 0) p.setDefaultClkId(0);
  }
  for (int i = 0; i < c.busInterfaces; ++i) {
    HTEQHardwareBusInterface* bus = p.addBusInterface();
    bus->setName("S" + num(i) + "_AXI");
    bus->setMode(i % 2 ? "master" : "slave");
    bus->setBusTypeRef("aximm");
    bus->setInstRef("pfm_top_i/dynamic_region/axi_interconnect_" + num(i));
    bus->setClockRef("clk_out" + num(i % c.clocks));
    bus->setSPTag(i % 3 ? "DDR" : "HBM");
    bus->setDataWidth(512);
    bus->setCompRef("acme.com:ip:axi_interconnect:2.1");
    bus->setBusInterfaceRef("S" + num(i) + "_AXI");
    bus->setResetRef("rst_" + num(i % c.clocks));
    bus->setMemPort("M" + num(i % 16) + "_AXI");
    bus->setCategory(i % 2 ? "memory" : "control");
    for (int s = 0; s < 4; ++s) {
      HTEQHardwareAddressSegment* seg = bus->addAddressSegment();
      seg->setBaseName("bank" + num((i + s) % c.memories));
      seg->setIndex(static_cast<unsigned int>(s));
      seg->setMemoryInstance("memory_subsystem/MIG" + num(s));
      seg->setSpTag("DDR[" + num(s) + "]");
      seg->setSlr("SLR" + num(s % 3));
      seg->setAuto("true");
      seg->setMaxMasters(16);
      seg->setName("SEG_memory_subsystem_bank" + num((i + s) % c.memories) + "_Mem" + num(s));
      seg->setInstanceRef("pfm_top_i/static_region/memory_subsystem/memss_" + num(s));
      seg->setRegion("pfm_top_i/dynamic_region/region_" + num(s));
      seg->setReadBwUsed(25 * s);
      seg->setWriteBwUsed(25 * s);
      seg->setInterleave(4);
    }
  }
  for (int i = 0; i < c.nocs; ++i) {
    HTEQHardwareNocConnectivity* noc = p.addNocConnectivity();
    noc->setInstanceRef("noc_" + num(i));
    HTEQHardwareBusInterface* bus = noc->addBusInterface();
    bus->setName("NOC_S" + num(i));
    bus->setMode("slave");
  }
  for (int i = 0; i < c.ipParams; ++i) {
    HTEQHardwareIPParam* ip = p.addHardwareIPParam();
    ip->setName("PARAM_" + num(i));
    ip->setValue(num(i * 7));
    ip->setIsValid("true");
    ip->setInstRef("pfm_top_i/ip_" + num(i % 10));
  }
}

std::string documentOf(const HPLPlatform& p) {
  teq_platform::JSONObjectWriter w;
  p.toJSON(w);
  std::ostringstream out;
  w.write(out);
  return out.str();
}

// The path `rel` below `root`, with its directories made without following a
// link. A link or another non-directory on the way, or anything but a regular
// file at the path itself, is refused: the sample is never written outside
// `root` nor through a link someone left in it.
std::string placeBelow(const std::string& root, const std::string& rel) {
  const std::string path = root + "/" + rel;
  const auto slash = rel.rfind('/');
  if (!HUTFile::mkDirBelow(root, slash == std::string::npos ? std::string() : rel.substr(0, slash)))
    throw HEXUserException("cannot write '" + path + "': a directory on its way is a link or no directory");
  if (!HUTFile::isReplaceable(path))
    throw HEXUserException("cannot write '" + path + "': it is not a regular file");
  return path;
}

// An archive with its JSON member (and, when asked, the emulation child).
void writeArchive(const std::string& root, const std::string& rel, const std::string& name, Kind kind,
                  const Counts& c, bool emulation) {
  const std::string path = placeBelow(root, rel);
  HPLPlatform hw;
  fillPlatform(hw, name, kind, c, false);
  std::vector<std::pair<std::string, std::string>> members = {{"lfa.json", documentOf(hw)}};
  if (emulation) {
    HPLPlatform emu;
    fillPlatform(emu, name, kind, Counts{2, 2, 1, 1, 1, 1, 0}, true);
    members.emplace_back("hw_emu/lfa.json", documentOf(emu));
  }
  std::remove(path.c_str());
  for (const auto& m : members) HUTZip::writeMember(path, m.first, m.second);
}

// The older form of archive: its metadata as one XML member ("cfa.xml"),
// read by the XML route.
std::string cfaXml(const std::string& name, const Counts& c) {
  std::string memories;
  for (int i = 0; i < c.memories; ++i)
    memories += "        <Memory Name=\"ddr" + num(i) + "\" Type=\"ddr4\" Size=\"4GB\"/>\n";
  std::string files;
  for (int i = 0; i < c.files; ++i)
    files += "      <File Type=\"" + std::string(i == 0 ? "FULL_BIT" : "PRE_SYS_LINK_TCL") + "\" Name=\"" +
             (i == 0 ? "hw/" + name + ".bit" : "scripts/step" + num(i) + ".tcl") + "\"/>\n";
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<Root VersionMajor=\"1\" VersionMinor=\"15\">\n"
         "  <CFA Vendor=\"acme\" BoardId=\"" +
         name +
         "\" Name=\"base\" VersionMajor=\"2\" VersionMinor=\"1\" "
         "Description=\"Sample platform " +
         name +
         "\" Fixed=\"false\">\n"
         "    <Host Architecture=\"aarch64\" Interface=\"axi\"/>\n"
         "    <Build UsesPR=\"false\" PlatformState=\"impl\"/>\n"
         "    <Board Name=\"acme:" +
         name +
         ":1.0\" Vendor=\"acme\" Part=\"ptzq9kp-pk676-2-e\">\n"
         "      <Memories>\n" +
         memories +
         "      </Memories>\n"
         "      <Images/>\n"
         "    </Board>\n"
         "    <Devices>\n"
         "      <Device Name=\"fpga0\" Type=\"8\"><Core Name=\"OCL_REGION_0\" Type=\"clc_region\" "
         "ComputeUnits=\"16\"/></Device>\n"
         "    </Devices>\n"
         "    <Files>\n" +
         files +
         "    </Files>\n"
         "  </CFA>\n"
         "</Root>\n";
}

// Writes a new file beside the target and renames it into place, so that a
// failed write leaves the target as it was.
void writeText(const std::string& root, const std::string& rel, const std::string& text) {
  const std::string path = placeBelow(root, rel);
  std::string pattern = path + ".XXXXXX";
  const int fd = ::mkstemp(&pattern[0]);
  if (fd < 0) throw HEXUserException("cannot write '" + path + "': " + std::strerror(errno));
  const char* data = text.data();
  std::size_t left = text.size();
  int error = 0;
  while (left > 0 && error == 0) {
    const ssize_t put = ::write(fd, data, left);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) {
      error = put < 0 ? errno : EIO;
      break;
    }
    data += put;
    left -= static_cast<std::size_t>(put);
  }
  const mode_t mask = ::umask(0);
  ::umask(mask);
  ::fchmod(fd, 0666 & ~mask);
  if (::close(fd) != 0 && error == 0) error = errno;
  if (error == 0 && ::rename(pattern.c_str(), path.c_str()) != 0) error = errno;
  if (error != 0) {
    ::unlink(pattern.c_str());
    throw HEXUserException("cannot write '" + path + "': " + std::strerror(error));
  }
}

std::string spfm(const std::string& name, bool embedded) {
  std::string s =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"sw\" teq:name=\"" +
      name +
      "\" teq:version=\"1.0\">\n"
      "  <teq:description>Software of " +
      name +
      "</teq:description>\n"
      "  <teq:systemConfigurations teq:defaultConfiguration=\"" +
      (embedded ? "linux_cfg" : "host_cfg") + "\">\n";
  if (embedded) {
    s += "    <teq:configuration teq:name=\"linux_cfg\" teq:displayName=\"Linux\" teq:runtimes=\"ocl\">\n"
         "      <teq:description>Linux on the application cores</teq:description>\n"
         "      <teq:bootImages teq:default=\"standard\">\n"
         "        <teq:image teq:name=\"standard\" teq:bif=\"boot/linux.bif\" teq:readme=\"boot/README\"/>\n"
         "      </teq:bootImages>\n"
         "      <teq:processorGroup teq:name=\"apu\" teq:displayName=\"APU\" teq:cpuType=\"cortex\">\n"
         "        <teq:os teq:name=\"linux\" teq:displayName=\"Linux\"/>\n"
         "      </teq:processorGroup>\n"
         "    </teq:configuration>\n";
  } else {
    s += "    <teq:configuration teq:name=\"host_cfg\" teq:displayName=\"Host\" teq:runtimes=\"ocl,cpp\">\n"
         "      <teq:description>Runs on an x86 host</teq:description>\n"
         "      <teq:processorGroup teq:name=\"x86_0\" teq:displayName=\"x86\" teq:cpuType=\"x86\">\n"
         "        <teq:os teq:name=\"linux\" teq:displayName=\"Linux\"/>\n"
         "      </teq:processorGroup>\n"
         "    </teq:configuration>\n";
  }
  return s + "  </teq:systemConfigurations>\n</teq:platform>\n";
}

std::string zdf(const std::string& name, const std::string& hardware, const std::string& hardwareAttrs) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"platform\" "
         "teq:name=\"" +
         name + "\" teq:version=\"2.1\">\n  <teq:description>Sample platform " + name +
         "</teq:description>\n  <teq:hardwarePlatforms" + hardwareAttrs + ">\n" + hardware +
         "  </teq:hardwarePlatforms>\n  <teq:softwarePlatforms>\n"
         "    <teq:softwarePlatform teq:path=\"sw\" teq:name=\"" +
         name + ".spfm\"/>\n  </teq:softwarePlatforms>\n</teq:platform>\n";
}

std::string fileRef(const char* element, const std::string& path, const std::string& name) {
  return std::string("    <teq:") + element + " teq:path=\"" + path + "\" teq:name=\"" + name + "\"/>\n";
}

// One data-centre platform per support verdict, versioned around this tool's release.
void writePolicyPlatforms(const std::string& dir, const Counts& counts, std::vector<std::string>& written) {
  const int year = HUTEnv::instance().getMajor();
  const int minor = HUTEnv::instance().getMinor();
  const std::string release = num(year) + "." + num(minor);
  struct Policy {
    std::string name;
    int major, minor;
    bool unified;
    std::string state, extensions;
  } const policies[] = {
      {"acme_policy_current", year, minor, true, "impl", ""},
      {"acme_policy_last_year", year - 1, 2, true, "impl", ""},
      {"acme_policy_old", year - 3, 1, true, "impl", ""},
      {"acme_policy_newer", year + 1, 1, true, "impl", ""},
      {"acme_policy_flat", year, minor, false, "impl", ""},
      {"acme_policy_presynth", year, minor, true, "pre_synth", ""},
      {"acme_policy_extended", year - 3, 1, true, "impl", "{\"extended_warranty\":[\"" + release + "\"]}"},
      {"acme_policy_refused", year, minor, true, "impl", ""},
      {"acme_policy_legacy", 2015, 1, true, "impl", ""},
  };
  for (const Policy& policy : policies) {
    const std::string& name = policy.name;
    HPLPlatform hw;
    fillPlatform(hw, name, Kind::DataCenter, counts, false);
    hw.setName(name);
    hw.setVersionMajor(static_cast<unsigned>(policy.major));
    hw.setVersionMinor(static_cast<unsigned>(policy.minor));
    hw.setUnifiedPlatform(policy.unified);
    hw.setPlatformState(policy.state);
    if (!policy.extensions.empty()) hw.addFile("META_JSON", "meta.json");
    const std::string archive = placeBelow(dir, name + "/hw/" + name + ".lfa");
    std::remove(archive.c_str());
    HUTZip::writeMember(archive, "lfa.json", documentOf(hw));
    if (!policy.extensions.empty()) HUTZip::writeMember(archive, "meta.json", policy.extensions);
    writeText(dir, name + "/sw/" + name + ".spfm", spfm(name, false));
    writeText(dir, name + "/" + name + ".zdf",
              zdf(name, fileRef("hardwarePlatform", "hw", name + ".lfa"), ""));
    written.push_back(dir + "/" + name + "/" + name + ".zdf");
  }
}

}  // namespace

std::vector<std::string> generateSample(const std::string& dir, const SampleOptions& options) {
  const Counts counts = countsFor(options.scale);
  // The directory itself is the user's choice and may be reached through a
  // link; everything below it is made by us.
  HUTFile::mkDirRecursive(dir);
  std::vector<std::string> written;
  for (int i = 0; i < options.count; ++i) {
    const Kind kind = i < 5 ? static_cast<Kind>(i) : Kind::DataCenter;
    static const char* const kNames[] = {"acme_dc", "acme_emb", "acme_rp", "acme_emu", "acme_card"};
    const std::string name = i < 5 ? std::string(kNames[i]) : "acme_dc_" + num(i);
    if (kind == Kind::HardwareOnly) {
      writeArchive(dir, name + "/" + name + ".lfa", name, kind, counts, false);
      written.push_back(dir + "/" + name + "/" + name + ".lfa");
      continue;
    }
    std::string hardware, attrs;
    if (kind == Kind::Partitioned) {
      writeArchive(dir, name + "/hw/" + name + "_rp0.lfa", name + "_rp0", kind, counts, false);
      writeArchive(dir, name + "/hw/" + name + "_rp1.lfa", name + "_rp1", kind, counts, false);
      hardware = "    <teq:reconfigurablePartition teq:id=\"0\">\n  " +
                 fileRef("hardwarePlatform", "hw", name + "_rp0.lfa") +
                 "    </teq:reconfigurablePartition>\n    <teq:reconfigurablePartition teq:id=\"1\">\n  " +
                 fileRef("hardwarePlatform", "hw", name + "_rp1.lfa") +
                 "    </teq:reconfigurablePartition>\n";
      attrs = " teq:defaultRP=\"1\"";
    } else if (kind == Kind::Embedded) {
      const std::string cfa = placeBelow(dir, name + "/hw/" + name + ".cfa");
      std::remove(cfa.c_str());
      HUTZip::writeMember(cfa, "cfa.xml", cfaXml(name, counts));
      hardware = fileRef("hardwarePlatform", "hw", name + ".cfa");
    } else {
      writeArchive(dir, name + "/hw/" + name + ".lfa", name, kind, counts, kind == Kind::WithEmulation);
      hardware = fileRef("hardwarePlatform", "hw", name + ".lfa");
    }
    writeText(dir, name + "/sw/" + name + ".spfm", spfm(name, kind == Kind::Embedded));
    writeText(dir, name + "/" + name + ".zdf", zdf(name, hardware, attrs));
    written.push_back(dir + "/" + name + "/" + name + ".zdf");
  }
  if (options.policy) writePolicyPlatforms(dir, counts, written);
  return written;
}

}  // namespace zr_cli
