// to-xml, emu-json, make-lfa and hdf2cfa: the library's writers and archive
// makers from the command line.

#include <memory>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HDFToCFAConverter.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaXmlWriter.h"
#include "platform/HTEQEmulationJsonWriter.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/PlatformLoader.h"
#include "platform/SimpleFixedLFACreator.h"

namespace zr_cli {
namespace {

// "zr-platform: FILE: REASON" with the most severe message of the run, and 1.
int failed(const std::string& file, const std::string& what, const MessageCollector& messages) {
  const std::string worst = messages.worst();
  reportError(file, worst.empty() ? what : what + ": " + worst);
  return kCannotLoad;
}

int toXml(const std::string& archive, const std::string& dest, std::ostream& out) {
  return guarded(archive, [&](MessageCollector& messages) {
    requireRegularFile(archive);
    // The loader picks the route (JSON member first, else the XML member).
    teq_platform::PlatformLoader loader(archive, teq_platform::PlatformLoader::Default);
    const std::shared_ptr<HTEQPlatform> platform = loader.load();
    auto* hardware = platform ? dynamic_cast<HPLPlatform*>(platform->getHardwarePlatform()) : nullptr;
    if (hardware == nullptr) return failed(archive, "cannot load the hardware platform", messages);
    HTEQCfaXmlWriter(hardware, dest).writeCFA();
    out << dest << "\n";
    return int(kOk);
  });
}

int emuJson(const std::string& source, const std::string& member, const std::string& dest,
            std::ostream& out) {
  return guarded(source, [&](MessageCollector&) {
    requireRegularFile(source);
    HTEQEmulations model;
    if (member.empty())
      HTEQEmulationXMLReader(source, &model).parseXml();
    else
      HTEQEmulationXMLReader::parseFromCfa(source, member, &model);
    HTEQEmulationJsonWriter(&model, dest).writeJson();
    out << dest << "\n";
    return int(kOk);
  });
}

int makeLfa(const std::string& output, const std::vector<std::string>& files, std::ostream& out) {
  return guarded(output, [&](MessageCollector&) {
    // Every input is checked before the creator removes an old output.
    for (const std::string& file : files) requireRegularFile(file);
    SimpleFixedLFACreator creator(output);
    for (const std::string& file : files) {
      const std::string name = HUTPathUtils::getFileName(file);
      const std::string target = creator.getStagingDir() + "/" + name;
      if (name == "lfa.json" || HUTFile::exists(target))
        throw HEXUserException("the name '" + name + "' is given twice or is the metadata member's");
      HUTFile::copyFile(file, target);
    }
    creator.writeLFA();
    out << output << "\n";
    return int(kOk);
  });
}

int hdfToCfa(const std::string& hdf, const std::string& outDir, const std::string& name, std::ostream& out) {
  return guarded(hdf, [&](MessageCollector& messages) {
    requireRegularFile(hdf);
    if (name.empty() || name.find('/') != std::string::npos)
      throw HEXUserException("the archive name '" + name + "' is not a plain file name");
    HDFToCFAConverter converter(hdf, outDir, name);
    if (!converter.writeCFA()) return failed(hdf, "cannot convert", messages);
    out << converter.getHwPfmFile() << "\n";
    return int(kOk);
  });
}

}  // namespace

void addWriterCommands(CLI::App& app, Commands& commands) {
  auto first = std::make_shared<std::string>();
  auto second = std::make_shared<std::string>();
  auto third = std::make_shared<std::string>();
  auto member = std::make_shared<std::string>();
  auto files = std::make_shared<std::vector<std::string>>();

  auto* toXmlCmd = app.add_subcommand("to-xml", "Write a hardware archive's platform as a CFA XML document");
  toXmlCmd->add_option("ARCHIVE", *first, "Hardware archive (.cfa or .lfa), JSON or XML metadata")
      ->required();
  toXmlCmd->add_option("DEST", *second, "XML file to write (replaced whole)")->required();
  commands.push_back({toXmlCmd, [=](std::ostream& out) { return toXml(*first, *second, out); }});

  auto* emuCmd = app.add_subcommand("emu-json", "Write emulation XML metadata as emulation JSON");
  emuCmd->add_option("SOURCE", *first, "Emulation XML file, or with --member a hardware archive")->required();
  emuCmd->add_option("DEST", *second, "JSON file to write (replaced whole)")->required();
  emuCmd->add_option("--member", *member, "The emulation XML member of the archive SOURCE");
  commands.push_back({emuCmd, [=](std::ostream& out) { return emuJson(*first, *member, *second, out); }});

  auto* lfaCmd = app.add_subcommand("make-lfa", "Make a fixed hardware archive holding the given files");
  lfaCmd->add_option("OUT", *first, "Archive to write")->required();
  lfaCmd->add_option("FILE", *files, "Files to carry, each under its file name");
  commands.push_back({lfaCmd, [=](std::ostream& out) { return makeLfa(*first, *files, out); }});

  auto* hdfCmd = app.add_subcommand("hdf2cfa", "Pack a hardware handoff file into a hardware archive");
  hdfCmd->add_option("HDF", *first, "Hardware handoff file")->required();
  hdfCmd->add_option("OUTDIR", *second, "Existing directory of the archive")->required();
  hdfCmd->add_option("NAME", *third, "Archive file name (\".lfa\" names the members lfa.*, else cfa.*)")
      ->required();
  commands.push_back({hdfCmd, [=](std::ostream& out) { return hdfToCfa(*first, *second, *third, out); }});
}

}  // namespace zr_cli
