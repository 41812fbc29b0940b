#include "host/IslXp.h"

#include <sys/stat.h>
#include <unistd.h>

#include <boost/iostreams/copy.hpp>
#include <boost/iostreams/device/array.hpp>
#include <boost/iostreams/device/back_inserter.hpp>
#include <boost/iostreams/filter/zlib.hpp>
#include <boost/iostreams/filtering_stream.hpp>
#include <cerrno>
#include <vector>

#include "ZrOwned.h"
#include "ZrTempFile.h"
#include "ZrZipArchive.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"

namespace bio = boost::iostreams;

namespace isl {
namespace iostreams {
namespace xp {

namespace {

const char kMagic[4] = {'Z', 'R', 'X', 'P'};
const unsigned char kVersion = 1;

std::uint64_t declaredSize(const char* header) {
  std::uint64_t size = 0;
  for (int i = 15; i >= 8; --i) size = (size << 8) | static_cast<unsigned char>(header[i]);
  return size;
}

}  // namespace

bool has_xp_header(const char* data, std::size_t size) {
  return size >= kHeaderSize && std::memcmp(data, kMagic, 4) == 0 &&
         static_cast<unsigned char>(data[4]) == kVersion && data[5] == 0 && data[6] == 0 && data[7] == 0;
}

bool is_xp_format(const std::string& path) {
  char header[kHeaderSize];
  try {
    const zr_owned::Fd fd(HUTFile::openForReading(path));
    return ::read(fd.get(), header, kHeaderSize) == static_cast<ssize_t>(kHeaderSize) &&
           has_xp_header(header, kHeaderSize);
  } catch (const HEXAll&) {
    return false;
  }
}

std::uint64_t max_packed_size() { return HUTZip::getMaxMemberSize(); }

std::string pack(const std::string& data) {
  std::string out(kMagic, 4);
  out.push_back(static_cast<char>(kVersion));
  out.append(3, '\0');
  std::uint64_t size = data.size();
  for (int i = 0; i < 8; ++i, size >>= 8) out.push_back(static_cast<char>(size & 0xff));

  bio::filtering_ostream zipped;
  zipped.push(bio::zlib_compressor());
  zipped.push(bio::back_inserter(out));
  zipped.write(data.data(), static_cast<std::streamsize>(data.size()));
  zipped.reset();  // flushes the compressor into `out`
  return out;
}

std::string unpack(const std::string& packed) {
  if (!has_xp_header(packed.data(), packed.size()))
    throw HEXDataException("the data is not in the packed form: its header is missing or of another version");
  const std::uint64_t expected = declaredSize(packed.data());
  const std::uint64_t limit = HUTZip::getMaxMemberSize();
  if (expected > limit)
    throw HEXDataException("packed data claims " + std::to_string(expected) + " bytes, beyond the limit of " +
                           std::to_string(limit) + " bytes");

  std::string out;
  out.reserve(static_cast<std::size_t>(expected));
  try {
    bio::filtering_istream in;
    in.push(bio::zlib_decompressor());
    in.push(bio::array_source(packed.data() + kHeaderSize, packed.size() - kHeaderSize));
    in.exceptions(std::ios::badbit);
    char buffer[65536];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
      out.append(buffer, static_cast<std::size_t>(in.gcount()));
      if (out.size() > expected)
        throw HEXDataException("packed data unpacks beyond the " + std::to_string(expected) +
                               " bytes its header gives");
    }
  } catch (const std::ios_base::failure& e) {  // zlib_error is one of these
    throw HEXDataException(std::string("packed data is damaged: ") + e.what());
  }
  if (out.size() != expected)
    throw HEXDataException("packed data is cut short: it unpacks to " + std::to_string(out.size()) +
                           " bytes where its header gives " + std::to_string(expected));
  return out;
}

void write_file(const std::string& path, const std::string& data) {
  const std::string packed = pack(data);
  zr_zip::TempFile file(zr_zip::directoryOf(path), ".zr-xp-", path);
  file.write(packed.data(), packed.size());
  file.commitTo(path, zr_zip::newFileMode(0666));
}

std::string read_file(const std::string& path) {
  std::string data = HUTFile::readAll(path, max_packed_size() + kHeaderSize, "packed size limit");
  if (!has_xp_header(data.data(), data.size())) return data;
  try {
    return unpack(data);
  } catch (const HEXDataException& e) {
    throw HEXDataException("'" + path + "': " + e.getText());
  }
}

}  // namespace xp

xp_autodetect::xp_autodetect() : state_(std::make_shared<State>()) {}

void xp_autodetect::tooLarge_() {
  throw HEXDataException("packed data on the stream is larger than the limit of " +
                         std::to_string(xp::max_packed_size()) + " bytes");
}

}  // namespace iostreams
}  // namespace isl
