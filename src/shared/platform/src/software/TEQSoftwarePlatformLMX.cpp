#include "software/TEQSoftwarePlatformLMX.h"

#include <utility>

#include "host/HI18N.h"
#include "host/HSTStringUtils.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(spfm)

namespace TEQSoftwarePlatform {

const char* const kNamespaceUri = "urn:teq:platform";

namespace {

// The attributes of each element, in the order of the format. Reading and
// writing walk the same tables, so the two cannot disagree on a name or an order.
template <class Record>
using AttrTable = std::vector<std::pair<const char*, Attribute Record::*>>;

const AttrTable<Platform>& platformAttrs() {
  static const AttrTable<Platform> t = {{"vendor", &Platform::vendor},
                                        {"library", &Platform::library},
                                        {"name", &Platform::name},
                                        {"version", &Platform::version},
                                        {"schemaVersion", &Platform::schemaVersion}};
  return t;
}

const AttrTable<Configuration>& configurationAttrs() {
  static const AttrTable<Configuration> t = {{"name", &Configuration::name},
                                             {"displayName", &Configuration::displayName},
                                             {"defaultProcessorGroup", &Configuration::defaultProcessorGroup},
                                             {"runtimes", &Configuration::runtimes}};
  return t;
}

const AttrTable<Image>& imageAttrs() {
  static const AttrTable<Image> t = {{"name", &Image::name},
                                     {"type", &Image::type},
                                     {"bif", &Image::bif},
                                     {"imageData", &Image::imageData},
                                     {"bootmode", &Image::bootmode},
                                     {"rootfs", &Image::rootfs},
                                     {"mountPath", &Image::mountPath},
                                     {"readme", &Image::readme},
                                     {"qemuDevicetree", &Image::qemuDevicetree},
                                     {"qemuBoot", &Image::qemuBoot},
                                     {"qemuArguments", &Image::qemuArguments},
                                     {"hwBootBin", &Image::hwBootBin}};
  return t;
}

const AttrTable<ProcessorGroup>& processorGroupAttrs() {
  static const AttrTable<ProcessorGroup> t = {{"name", &ProcessorGroup::name},
                                              {"displayName", &ProcessorGroup::displayName},
                                              {"cpuType", &ProcessorGroup::cpuType},
                                              {"architecture", &ProcessorGroup::architecture},
                                              {"cpuInstance", &ProcessorGroup::cpuInstance}};
  return t;
}

const AttrTable<Os>& osAttrs() {
  static const AttrTable<Os> t = {{"name", &Os::name},
                                  {"displayName", &Os::displayName},
                                  {"hypervisorGuest", &Os::hypervisorGuest},
                                  {"includePaths", &Os::includePaths},
                                  {"libraryPaths", &Os::libraryPaths},
                                  {"libraryNames", &Os::libraryNames},
                                  {"ldscript", &Os::ldscript},
                                  {"sysRoot", &Os::sysRoot},
                                  {"bspConfig", &Os::bspConfig},
                                  {"bspLibraryPaths", &Os::bspLibraryPaths},
                                  {"bspIncludePaths", &Os::bspIncludePaths},
                                  {"bspRepo", &Os::bspRepo},
                                  {"compilerOptions", &Os::compilerOptions},
                                  {"linkerOptions", &Os::linkerOptions},
                                  {"osDependency", &Os::osDependency},
                                  {"crossCompilerType", &Os::crossCompilerType},
                                  {"toolConfig", &Os::toolConfig}};
  return t;
}

template <class Record>
void readAttrs(const zr_xml::Node& node, const AttrTable<Record>& table, Record& record) {
  for (const auto& entry : table)
    if (node.hasAttr(entry.first)) (record.*entry.second).set(HI18N::convert(node.attr(entry.first)));
}

template <class Record>
void writeAttrs(zr_xml::Builder::Element& element, const AttrTable<Record>& table, const Record& record) {
  for (const auto& entry : table) {
    const Attribute& a = record.*entry.second;
    if (a.isSet()) element.setAttr(entry.first, HI18N::convert(a.get()));
  }
}

// Decimal values keep their text, without the blanks the format allows around them.
void trimDecimal(Attribute& a) {
  if (a.isSet()) a.set(HI18N::convert(HSTStringUtils::trim(HI18N::convert(a.get()))));
}

Configuration readConfiguration(const zr_xml::Node& node) {
  Configuration c;
  readAttrs(node, configurationAttrs(), c);
  c.description = HI18N::convert(node.child("description").text());
  if (const auto prebuilt = node.child("prebuilt")) {
    c.prebuilt.emplace();
    if (prebuilt.hasAttr("data")) c.prebuilt->data.set(HI18N::convert(prebuilt.attr("data")));
  }
  if (const auto boot = node.child("bootImages")) {
    c.bootImages.emplace();
    if (boot.hasAttr("default")) c.bootImages->defaultImage.set(HI18N::convert(boot.attr("default")));
    readAttrs(boot.child("image"), imageAttrs(), c.bootImages->image);
  }
  for (const auto& groupNode : node.children("processorGroup")) {
    ProcessorGroup g;
    readAttrs(groupNode, processorGroupAttrs(), g);
    readAttrs(groupNode.child("os"), osAttrs(), g.os);
    c.processorGroups.push_back(std::move(g));
  }
  return c;
}

Platform fromDocument(const zr_xml::Document& doc) {
  const auto root = doc.root();
  Platform p;
  readAttrs(root, platformAttrs(), p);
  trimDecimal(p.version);
  trimDecimal(p.schemaVersion);
  p.description = HI18N::convert(root.child("description").text());
  const auto configs = root.child("systemConfigurations");
  if (configs.hasAttr("defaultConfiguration"))
    p.systemConfigurations.defaultConfiguration.set(HI18N::convert(configs.attr("defaultConfiguration")));
  for (const auto& configNode : configs.children("configuration"))
    p.systemConfigurations.configurations.push_back(readConfiguration(configNode));
  return p;
}

}  // namespace

Platform unmarshalFile(const std::string& path) {
  return fromDocument(zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(spfm)));
}

Platform unmarshalString(const std::string& text, const std::string& name) {
  return fromDocument(zr_xml::Document::parseMemory(text, name, ZR_XML_SCHEMA(spfm)));
}

std::string marshal(const Platform& platform) {
  zr_xml::Builder builder("platform", kNamespaceUri, "teq", true);
  auto root = builder.root();
  writeAttrs(root, platformAttrs(), platform);
  root.addChild("description").setText(HI18N::convert(platform.description));
  auto configs = root.addChild("systemConfigurations");
  const auto& sc = platform.systemConfigurations;
  if (sc.defaultConfiguration.isSet())
    configs.setAttr("defaultConfiguration", HI18N::convert(sc.defaultConfiguration.get()));
  for (const auto& c : sc.configurations) {
    auto config = configs.addChild("configuration");
    writeAttrs(config, configurationAttrs(), c);
    config.addChild("description").setText(HI18N::convert(c.description));
    if (c.prebuilt) {
      auto prebuilt = config.addChild("prebuilt");
      if (c.prebuilt->data.isSet()) prebuilt.setAttr("data", HI18N::convert(c.prebuilt->data.get()));
    }
    if (c.bootImages) {
      auto boot = config.addChild("bootImages");
      if (c.bootImages->defaultImage.isSet())
        boot.setAttr("default", HI18N::convert(c.bootImages->defaultImage.get()));
      auto image = boot.addChild("image");
      writeAttrs(image, imageAttrs(), c.bootImages->image);
    }
    for (const auto& g : c.processorGroups) {
      auto group = config.addChild("processorGroup");
      writeAttrs(group, processorGroupAttrs(), g);
      auto os = group.addChild("os");
      writeAttrs(os, osAttrs(), g.os);
    }
  }
  builder.validate(ZR_XML_SCHEMA(spfm));
  return builder.toString();
}

}  // namespace TEQSoftwarePlatform
