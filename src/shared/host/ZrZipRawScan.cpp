#include "ZrZipRawScan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <vector>

#include "ZrOwned.h"

namespace zr_zip {

namespace {

std::uint64_t le(const unsigned char* p, int bytes) {
  std::uint64_t v = 0;
  for (int i = bytes - 1; i >= 0; --i) v = (v << 8) | p[i];
  return v;
}

bool readAt(int fd, std::uint64_t offset, std::size_t length, std::vector<unsigned char>& out) {
  out.resize(length);
  std::size_t done = 0;
  while (done < length) {
    const ssize_t got = ::pread(fd, out.data() + done, length - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    done += static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace

bool rawNamesHoldNul(const std::string& path, std::string& name) {
  // Only regular files: a FIFO would block the open.
  struct stat st;
  if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return false;
  const zr_owned::Fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return fd && rawNamesHoldNul(fd.get(), name);
}

bool rawNamesHoldNul(int in, std::string& name) {
  struct stat st;
  if (::fstat(in, &st) != 0) return false;
  const std::uint64_t fileSize = static_cast<std::uint64_t>(st.st_size);
  const std::uint64_t kEndRecord = 22;
  if (fileSize < kEndRecord) return false;

  // The end record sits in the last 64 KiB + 22 bytes, before the archive comment.
  const std::uint64_t tailSize = fileSize < 0xffff + kEndRecord ? fileSize : 0xffff + kEndRecord;
  std::vector<unsigned char> tail;
  if (!readAt(in, fileSize - tailSize, static_cast<std::size_t>(tailSize), tail)) return false;
  std::int64_t pos = static_cast<std::int64_t>(tailSize - kEndRecord);
  for (; pos >= 0; --pos)
    if (std::memcmp(&tail[static_cast<std::size_t>(pos)], "PK\x05\x06", 4) == 0) break;
  if (pos < 0) return false;
  const unsigned char* end = &tail[static_cast<std::size_t>(pos)];
  std::uint64_t entries = le(end + 10, 2);
  std::uint64_t cdSize = le(end + 12, 4);
  std::uint64_t cdOffset = le(end + 16, 4);

  if (entries == 0xffff || cdSize == 0xffffffff || cdOffset == 0xffffffff) {
    // A zip64 archive: the locator just before the end record points at the zip64 end record.
    const std::uint64_t endOffset = fileSize - tailSize + static_cast<std::uint64_t>(pos);
    std::vector<unsigned char> locator, record;
    if (endOffset < 20 || !readAt(in, endOffset - 20, 20, locator) ||
        std::memcmp(locator.data(), "PK\x06\x07", 4) != 0)
      return false;
    const std::uint64_t recordOffset = le(&locator[8], 8);
    if (recordOffset > fileSize || !readAt(in, recordOffset, 56, record) ||
        std::memcmp(record.data(), "PK\x06\x06", 4) != 0)
      return false;
    entries = le(&record[32], 8);
    cdSize = le(&record[40], 8);
    cdOffset = le(&record[48], 8);
  }
  const std::uint64_t kMaxDirectory = 256ull << 20;
  if (cdOffset > fileSize || cdSize > fileSize - cdOffset || cdSize > kMaxDirectory) return false;

  std::vector<unsigned char> cd;
  if (!readAt(in, cdOffset, static_cast<std::size_t>(cdSize), cd)) return false;
  std::size_t at = 0;
  for (std::uint64_t i = 0; i < entries; ++i) {
    if (at + 46 > cd.size() || std::memcmp(&cd[at], "PK\x01\x02", 4) != 0) return false;
    const std::size_t nameLength = static_cast<std::size_t>(le(&cd[at + 28], 2));
    const std::size_t extraLength = static_cast<std::size_t>(le(&cd[at + 30], 2));
    const std::size_t commentLength = static_cast<std::size_t>(le(&cd[at + 32], 2));
    if (at + 46 + nameLength > cd.size()) return false;
    const char* raw = reinterpret_cast<const char*>(&cd[at + 46]);
    if (std::memchr(raw, 0, nameLength)) {
      name.clear();
      for (std::size_t k = 0; k < nameLength; ++k) {
        if (raw[k] == '\0')
          name += "\\0";
        else
          name += raw[k];
      }
      return true;
    }
    at += 46 + nameLength + extraLength + commentLength;
  }
  return false;
}

}  // namespace zr_zip
