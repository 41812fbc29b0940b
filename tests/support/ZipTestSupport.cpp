#include "support/ZipTestSupport.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <zip.h>

#include <cstring>
#include <random>
#include <stdexcept>

#include "host/HUTZip.h"
#include "support/TestSupport.h"

namespace zr_test {

namespace {

std::uint32_t le32(const std::string& s, std::size_t at) {
  std::uint32_t v = 0;
  for (int i = 3; i >= 0; --i) v = (v << 8) | static_cast<unsigned char>(s[at + i]);
  return v;
}

std::uint16_t le16(const std::string& s, std::size_t at) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(s[at]) |
                                    (static_cast<unsigned char>(s[at + 1]) << 8));
}

void put32(std::string& s, std::size_t at, std::uint32_t v) {
  for (int i = 0; i < 4; ++i, v >>= 8) s[at + i] = static_cast<char>(v & 0xff);
}

}  // namespace

std::string makeZip(const std::string& path, const ZipMembers& members, const std::string& comment) {
  int error = 0;
  zip_t* za = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  if (!za) throw std::runtime_error("makeZip: cannot open " + path);
  for (const auto& m : members) {
    if (!m.first.empty() && m.first.back() == '/') {
      if (zip_dir_add(za, m.first.c_str(), 0) < 0) throw std::runtime_error("makeZip: " + m.first);
      continue;
    }
    zip_source_t* src = zip_source_buffer(za, m.second.data(), m.second.size(), 0);
    if (!src || zip_file_add(za, m.first.c_str(), src, ZIP_FL_ENC_UTF_8) < 0)
      throw std::runtime_error("makeZip: cannot add " + m.first);
  }
  if (!comment.empty())
    zip_set_archive_comment(za, comment.data(), static_cast<zip_uint16_t>(comment.size()));
  if (zip_close(za) != 0) throw std::runtime_error("makeZip: cannot write " + path);
  return path;
}

std::string memberText(const std::string& zip, const std::string& name) {
  std::string content;
  EXPECT_TRUE(HUTZip::readMember(zip, name, content)) << name;
  return content;
}

int patchBytes(const std::string& path, const std::string& from, const std::string& to) {
  if (from.size() != to.size()) throw std::invalid_argument("patchBytes: lengths differ");
  std::string data = readFile(path);
  int count = 0;
  for (std::size_t at = data.find(from); at != std::string::npos; at = data.find(from, at + to.size())) {
    data.replace(at, from.size(), to);
    ++count;
  }
  writeFile(path, data);
  return count;
}

void patchFirstRecordedSize(const std::string& path, std::uint32_t size) {
  std::string data = readFile(path);
  const std::size_t local = data.find(std::string("PK\x03\x04", 4));
  const std::size_t central = data.find(std::string("PK\x01\x02", 4));
  if (local == std::string::npos || central == std::string::npos)
    throw std::runtime_error("patchFirstRecordedSize: no zip headers in " + path);
  put32(data, local + 22, size);
  put32(data, central + 24, size);
  writeFile(path, data);
}

void damageFirstMemberData(const std::string& path) {
  std::string data = readFile(path);
  const std::size_t local = data.find(std::string("PK\x03\x04", 4));
  if (local == std::string::npos) throw std::runtime_error("damageFirstMemberData: no local header");
  const std::size_t start = local + 30 + le16(data, local + 26) + le16(data, local + 28);
  const std::uint32_t stored = le32(data, local + 18);
  if (stored < 4) throw std::runtime_error("damageFirstMemberData: member too small");
  for (std::size_t i = start + stored / 2; i < start + stored / 2 + 4; ++i)
    data[i] = static_cast<char>(~data[i]);
  writeFile(path, data);
}

std::string incompressible(std::size_t n) {
  std::mt19937 gen(12345);
  std::string s(n, '\0');
  for (char& c : s) c = static_cast<char>(gen() & 0xff);
  return s;
}

ScopedMemberLimit::ScopedMemberLimit(std::uint64_t bytes) : old_(HUTZip::getMaxMemberSize()) {
  HUTZip::setMaxMemberSize(bytes);
}

ScopedMemberLimit::~ScopedMemberLimit() { HUTZip::setMaxMemberSize(old_); }

struct ScopedFileSizeLimit::Saved {
  struct sigaction action;
  struct rlimit limit;
};

ScopedFileSizeLimit::ScopedFileSizeLimit(std::uint64_t bytes) : saved_(new Saved) {
  struct sigaction ignore = {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGXFSZ, &ignore, &saved_->action);
  getrlimit(RLIMIT_FSIZE, &saved_->limit);
  struct rlimit small = saved_->limit;
  small.rlim_cur = bytes;
  setrlimit(RLIMIT_FSIZE, &small);
}

ScopedFileSizeLimit::~ScopedFileSizeLimit() {
  setrlimit(RLIMIT_FSIZE, &saved_->limit);
  sigaction(SIGXFSZ, &saved_->action, nullptr);
  delete saved_;
}

}  // namespace zr_test
