#ifndef HOST_ZRZIPDIGEST_H
#define HOST_ZRZIPDIGEST_H

#include <string>

namespace zr_zip {

class Archive;

// The SHA-256, as 64 lower-case hex digits, over the members of an archive
// in name order: for each member its name, a NUL byte and the SHA-256 of its
// content. Hashing each content first keeps the records unambiguous. Reads
// through the size limit; throws HEXDataException for a damaged member.
std::string computeDigest(Archive& archive);

// The archive comment that carries a digest, and the way back: false when the
// comment carries none.
std::string digestComment(const std::string& hexDigest);
bool parseDigestComment(const std::string& comment, std::string& hexDigest);

}  // namespace zr_zip

#endif
