// labels: the documents derived from a labels file. rqa show|add|extract: the
// metadata archive's index, adding a file to it, and extracting the file of one type.

#include <memory>
#include <string>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HRQAArchive.h"
#include "platform/HTEQSemanticLabelReader.h"
#include "platform/JSONObjectWriter.h"

namespace zr_cli {

namespace {

// The archive with its index read; a missing or unreadable index throws.
HRQAArchive openArchive(const std::string& file, MessageCollector& messages) {
  requireRegularFile(file);
  HRQAArchive rqa;
  rqa.setFile(file);
  if (!rqa.parse()) throw HEXUserException("no readable index: " + messages.worst());
  return rqa;
}

}  // namespace

void addLabelCommands(CLI::App& app, Commands& commands) {
  auto labelsFile = std::make_shared<std::string>();
  auto partition = std::make_shared<std::string>();
  auto* labels = app.add_subcommand(
      "labels", "The partition metadata of a labels file, or one partition's extended metadata");
  labels->add_option("FILE", *labelsFile, "Labels file (JSON)")->required();
  labels->add_option("--partition", *partition, "Partition path: print its extended metadata instead");
  commands.push_back({labels, [labelsFile, partition, labels](std::ostream& out) {
                        return guarded(*labelsFile, [&](MessageCollector& messages) {
                          requireRegularFile(*labelsFile);
                          HTEQSemanticLabelReader reader;
                          if (!reader.parseFile(*labelsFile)) {
                            reportError(*labelsFile, messages.worst());
                            return int(kCannotLoad);
                          }
                          if (labels->count("--partition") > 0) {
                            reader.generateExtMetadata(*partition, out);
                          } else {
                            reader.generatePartitionMetadata(out);
                          }
                          return int(kOk);
                        });
                      }});

  auto archive = std::make_shared<std::string>();
  auto type = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  auto source = std::make_shared<std::string>();
  auto dest = std::make_shared<std::string>();
  auto* group = app.add_subcommand("rqa", "Metadata archives: show the index, add a file, extract by type");
  group->require_subcommand(1);

  auto* show = group->add_subcommand("show", "Print the index of a metadata archive as JSON");
  show->add_option("ARCHIVE", *archive, "Metadata archive")->required();
  commands.push_back({show, [archive](std::ostream& out) {
                        return guarded(*archive, [&](MessageCollector& messages) {
                          const HRQAArchive rqa = openArchive(*archive, messages);
                          teq_platform::JSONObjectWriter writer;
                          rqa.toJSON(writer);
                          writer.write(out);
                          return int(kOk);
                        });
                      }});

  auto* add =
      group->add_subcommand("add", "Put a file into a metadata archive (made when missing) under a type");
  add->add_option("ARCHIVE", *archive, "Metadata archive")->required();
  add->add_option("TYPE", *type, "File type")->required();
  add->add_option("NAME", *name, "Member name")->required();
  add->add_option("SOURCE", *source, "File to add")->required();
  commands.push_back({add, [archive, type, name, source](std::ostream&) {
                        return guarded(*archive, [&](MessageCollector& messages) {
                          if (HUTFile::exists(*archive)) {
                            HRQAArchive rqa = openArchive(*archive, messages);
                            rqa.archive(*type, *name, *source);
                            return int(kOk);
                          }
                          // A new archive holds only its index until the file is in; a failed
                          // add leaves no archive behind.
                          HRQAArchive rqa;
                          rqa.setFile(*archive);
                          rqa.writeJSON();
                          try {
                            rqa.archive(*type, *name, *source);
                          } catch (...) {
                            HUTFile::rm(*archive);
                            throw;
                          }
                          return int(kOk);
                        });
                      }});

  auto* extract =
      group->add_subcommand("extract", "Extract the file or directory of one type; prints its path");
  extract->add_option("ARCHIVE", *archive, "Metadata archive")->required();
  extract->add_option("TYPE", *type, "File type")->required();
  extract->add_option("DEST", *dest, "Destination directory")->required();
  commands.push_back({extract, [archive, type, dest](std::ostream& out) {
                        return guarded(*archive, [&](MessageCollector& messages) {
                          const HRQAArchive rqa = openArchive(*archive, messages);
                          const std::string path = rqa.extract(*type, *dest);
                          if (path.empty()) {
                            reportError(*archive, "nothing of type '" + *type + "'");
                            return int(kCannotLoad);
                          }
                          out << escapeControls(path) << "\n";
                          return int(kOk);
                        });
                      }});
}

}  // namespace zr_cli
