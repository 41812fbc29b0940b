#include "ZrZipDigest.h"

#include <openssl/evp.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "ZrOwned.h"
#include "ZrZipArchive.h"
#include "host/HEXAll.h"

namespace zr_zip {

namespace {

const char kCommentPrefix[] = "zr-digest sha256:";

class Sha256 {
 public:
  Sha256() : ctx_(EVP_MD_CTX_new()) {
    if (!ctx_ || EVP_DigestInit_ex(ctx_.get(), EVP_sha256(), nullptr) != 1)
      throw HEXError("cannot start a SHA-256 digest");
  }
  void update(const void* data, std::size_t size) {
    if (size > 0 && EVP_DigestUpdate(ctx_.get(), data, size) != 1)
      throw HEXError("cannot update a SHA-256 digest");
  }
  std::string finish() {
    unsigned char out[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (EVP_DigestFinal_ex(ctx_.get(), out, &length) != 1) throw HEXError("cannot finish a SHA-256 digest");
    return std::string(reinterpret_cast<char*>(out), length);
  }

 private:
  zr_owned::Owned<EVP_MD_CTX, EVP_MD_CTX_free> ctx_;
};

std::string toHex(const std::string& bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string hex;
  for (unsigned char c : bytes) {
    hex.push_back(digits[c >> 4]);
    hex.push_back(digits[c & 15]);
  }
  return hex;
}

}  // namespace

std::string computeDigest(Archive& archive) {
  std::vector<std::pair<std::string, std::int64_t>> members;
  const std::int64_t n = archive.size();
  for (std::int64_t i = 0; i < n; ++i) members.emplace_back(archive.name(i), i);
  std::sort(members.begin(), members.end());

  Sha256 whole;
  char buffer[65536];
  for (const auto& member : members) {
    Sha256 content;
    MemberReader reader(archive, member.second);
    for (std::size_t got; (got = reader.read(buffer, sizeof buffer)) > 0;) content.update(buffer, got);
    whole.update(member.first.data(), member.first.size());
    whole.update("", 1);
    whole.update(content.finish().data(), 32);
  }
  return toHex(whole.finish());
}

std::string digestComment(const std::string& hexDigest) { return kCommentPrefix + hexDigest; }

bool parseDigestComment(const std::string& comment, std::string& hexDigest) {
  const std::size_t prefix = sizeof kCommentPrefix - 1;
  if (comment.size() != prefix + 64 || comment.compare(0, prefix, kCommentPrefix) != 0) return false;
  hexDigest = comment.substr(prefix);
  return std::all_of(hexDigest.begin(), hexDigest.end(),
                     [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

}  // namespace zr_zip
