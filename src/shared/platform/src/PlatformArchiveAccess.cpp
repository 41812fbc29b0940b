#include "PlatformArchiveAccess.h"

#include <zip.h>

#include <fstream>

#include "host/HUTFile.h"

namespace {
// A member copied out of an archive larger than this is refused: metadata
// members are small, and a bigger one is a damaged or hostile archive.
const zip_uint64_t kMaxExtractedMemberSize = 256ull * 1024 * 1024;
}  // namespace

bool PlatformArchiveAccess::hasMember(const std::string& archive, const std::string& member) {
  if (archive.empty() || member.empty() || !HUTFile::isFile(archive)) return false;
  int err = 0;
  zip_t* za = zip_open(archive.c_str(), ZIP_RDONLY, &err);
  if (za == nullptr) return false;
  const bool found = zip_name_locate(za, member.c_str(), 0) >= 0;
  zip_discard(za);
  return found;
}

bool PlatformArchiveAccess::extractMember(const std::string& archive, const std::string& member,
                                          const std::string& dest) {
  if (archive.empty() || member.empty() || !HUTFile::isFile(archive)) return false;
  int err = 0;
  zip_t* za = zip_open(archive.c_str(), ZIP_RDONLY, &err);
  if (za == nullptr) return false;
  bool ok = false;
  zip_stat_t st;
  zip_stat_init(&st);
  if (zip_stat(za, member.c_str(), 0, &st) == 0 && (st.valid & ZIP_STAT_SIZE) != 0 &&
      st.size <= kMaxExtractedMemberSize) {
    zip_file_t* zf = zip_fopen(za, member.c_str(), 0);
    if (zf != nullptr) {
      std::ofstream out(dest, std::ios::out | std::ios::binary | std::ios::trunc);
      if (out) {
        char buf[4096];
        zip_uint64_t total = 0;
        zip_int64_t n = 0;
        ok = true;
        while ((n = zip_fread(zf, buf, sizeof buf)) > 0) {
          total += static_cast<zip_uint64_t>(n);
          if (total > kMaxExtractedMemberSize) {
            ok = false;
            break;
          }
          out.write(buf, n);
        }
        if (n < 0) ok = false;
        out.close();
        if (!out) ok = false;
      }
      zip_fclose(zf);
    }
  }
  zip_discard(za);
  if (!ok) HUTFile::rmRecursive(dest);
  return ok;
}
