#ifndef PLATFORM_HSTVECTOR_H
#define PLATFORM_HSTVECTOR_H

#include <string>
#include <vector>

// The vector and string of the public signatures. Both are the standard types,
// so callers may pass their own standard containers.
template <class T>
using HSTVector = std::vector<T>;

using HSTString = std::string;

#endif
