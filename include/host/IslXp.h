#ifndef HOST_ISLXP_H
#define HOST_ISLXP_H

// The packed "xp" form of a data file: a 16-byte header and a zlib body.
//
//   bytes 0-3   "ZRXP"
//   byte  4     format version, 1
//   bytes 5-7   zero
//   bytes 8-15  size of the unpacked data, little-endian
//   then        the data as one zlib stream
//
// Unpacking refuses a body that is damaged, that is cut short, or that
// unpacks to more or less than the header says, and anything beyond the
// archive layer's size limit (HUTZip::getMaxMemberSize), with HEXDataException.

#include <boost/iostreams/categories.hpp>
#include <boost/iostreams/operations.hpp>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ios>
#include <memory>
#include <string>

#include "platform/ZrPlatformExport.h"

namespace isl {
namespace iostreams {
namespace xp {

constexpr std::size_t kHeaderSize = 16;

// True when the bytes start with a complete header of the packed form.
ZR_PLATFORM_API bool has_xp_header(const char* data, std::size_t size);
// True when the file exists and starts with that header.
ZR_PLATFORM_API bool is_xp_format(const std::string& path);

ZR_PLATFORM_API std::string pack(const std::string& data);
ZR_PLATFORM_API std::string unpack(const std::string& packed);

// Writes data packed to the file (through a temporary file and a rename).
// Throws HEXUserException when the file cannot be written.
ZR_PLATFORM_API void write_file(const std::string& path, const std::string& data);
// The content of a file, unpacked when it is in the packed form, as it is
// otherwise. Throws HEXFileNotFoundException, or HEXDataException for a
// damaged packed file.
ZR_PLATFORM_API std::string read_file(const std::string& path);

// The largest packed body read from a stream (the size limit).
ZR_PLATFORM_API std::uint64_t max_packed_size();

}  // namespace xp

// An input filter for boost::iostreams chains that recognises the packed form
// on the stream below it: a stream that starts with the header is unpacked,
// any other passes through unchanged. Copies share their state, as a chain
// keeps a copy of the filter it is given.
class ZR_PLATFORM_API xp_autodetect {
 public:
  typedef char char_type;
  struct category : boost::iostreams::multichar_input_filter_tag, boost::iostreams::closable_tag {};

  xp_autodetect();

  // True once the stream was found to be packed.
  bool detected() const { return state_->packed; }

  template <typename Source>
  std::streamsize read(Source& src, char* s, std::streamsize n) {
    State& st = *state_;
    if (!st.started) {
      st.started = true;
      st.buffer = readSome_(src, xp::kHeaderSize);
      if (xp::has_xp_header(st.buffer.data(), st.buffer.size())) {
        st.packed = true;
        std::string body = st.buffer;
        for (std::string more; !(more = readSome_(src, 16384)).empty();) {
          body += more;
          if (body.size() > xp::max_packed_size() + xp::kHeaderSize) tooLarge_();
        }
        st.buffer = xp::unpack(body);
      }
    }
    if (st.position < st.buffer.size()) {
      std::size_t count = st.buffer.size() - st.position;
      if (count > static_cast<std::size_t>(n)) count = static_cast<std::size_t>(n);
      std::memcpy(s, st.buffer.data() + st.position, count);
      st.position += count;
      return static_cast<std::streamsize>(count);
    }
    if (st.packed) return -1;
    return boost::iostreams::read(src, s, n);
  }

  template <typename Source>
  void close(Source&) {
    *state_ = State();
  }

 private:
  struct State {
    bool started = false;
    bool packed = false;
    std::string buffer;
    std::size_t position = 0;
  };

  // Up to `want` bytes, fewer only at the end of the source.
  template <typename Source>
  static std::string readSome_(Source& src, std::size_t want) {
    std::string out(want, '\0');
    std::size_t have = 0;
    while (have < want) {
      const std::streamsize got =
          boost::iostreams::read(src, &out[have], static_cast<std::streamsize>(want - have));
      if (got <= 0) break;
      have += static_cast<std::size_t>(got);
    }
    out.resize(have);
    return out;
  }
  [[noreturn]] static void tooLarge_();

  std::shared_ptr<State> state_;
};

}  // namespace iostreams
}  // namespace isl

#endif
