// members and extract: what a hardware archive holds, and one member copied out.

#include <memory>
#include <string>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"

namespace zr_cli {

void addArchiveCommands(CLI::App& app, Commands& commands) {
  auto archive = std::make_shared<std::string>();
  auto member = std::make_shared<std::string>();
  auto dest = std::make_shared<std::string>();
  auto* members = app.add_subcommand("members", "List the members of a hardware archive");
  members->add_option("ARCHIVE", *archive, "Hardware archive (.cfa or .lfa)")->required();
  commands.push_back({members, [archive](std::ostream& out) {
                        return guarded(*archive, [&](MessageCollector&) {
                          requireRegularFile(*archive);
                          for (const auto& name : HUTZip::getFiles(*archive))
                            out << escapeControls(name) << "\n";
                          return int(kOk);
                        });
                      }});
  auto* extract = app.add_subcommand("extract", "Copy one member of a hardware archive out to a file");
  extract->add_option("ARCHIVE", *archive, "Hardware archive (.cfa or .lfa)")->required();
  extract->add_option("MEMBER", *member, "Member name, as `members` lists it")->required();
  extract->add_option("DEST", *dest, "File to write, or an existing directory to write MEMBER below")
      ->required();
  commands.push_back({extract, [archive, member, dest](std::ostream&) {
                        return guarded(*archive, [&](MessageCollector&) {
                          requireRegularFile(*archive);
                          // Into a directory the member keeps its path; the archive layer refuses
                          // a name that would leave the directory. A failure to write throws.
                          const bool ok = HUTFile::isDir(*dest)
                                              ? HUTZip::uncompress(*archive, *member, *dest, true)
                                              : HUTZip::extractMember(*archive, *member, *dest);
                          if (!ok) {
                            reportError(*archive, "no member '" + *member + "'");
                            return int(kCannotLoad);
                          }
                          return int(kOk);
                        });
                      }});
}

}  // namespace zr_cli
