#ifndef PLATFORM_VENDORDOMAIN_H
#define PLATFORM_VENDORDOMAIN_H

namespace zr_platform {

// The vendor written into the metadata this library generates itself (the
// converted hardware archives, the semantic label documents). A name under
// the reserved ".example" domain, so it can never be taken for a real maker.
constexpr char kVendorDomain[] = "platforms.zr.example";

}  // namespace zr_platform

#endif
