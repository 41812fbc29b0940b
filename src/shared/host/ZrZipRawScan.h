#ifndef HOST_ZRZIPRAWSCAN_H
#define HOST_ZRZIPRAWSCAN_H

#include <string>

namespace zr_zip {

// Walks the central directory of a zip file as stored and tells whether a
// member name holds a NUL byte (which the zip library would show with the
// byte replaced). On true, `name` is that name with the NUL bytes shown as
// "\0". A file whose directory cannot be walked answers false: the zip
// library has its own checks for that.
bool rawNamesHoldNul(const std::string& path, std::string& name);
// The same on an open file, read with pread (its offset is left alone).
bool rawNamesHoldNul(int fd, std::string& name);

}  // namespace zr_zip

#endif
