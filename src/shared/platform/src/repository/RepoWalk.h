#ifndef REPOSITORY_REPOWALK_H
#define REPOSITORY_REPOWALK_H

#include <functional>
#include <string>

#include "host/HUTDirWalker.h"

namespace zr_repo {

// The system-wide repository, separator + "opt" + separator + "torvane" +
// separator + "platforms".
const std::string& systemPlatformDir();

// "platforms" below an application root.
std::string appRootPlatformDir(const std::string& root);

// Walks one repository the way descriptors are looked for: links to
// directories followed, broken links skipped, entries listed down to two
// levels of subdirectories. `visit` gets every regular file whose extension
// is ".zdf" exactly, with its path (backslashes turned into "/"). False with
// the reason when the walk of the repository ended early.
bool walkZdfFiles(const std::string& repo, const std::function<void(const std::string&)>& visit,
                  std::string& error);

}  // namespace zr_repo

#endif
