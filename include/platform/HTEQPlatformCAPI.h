#ifndef PLATFORM_HTEQPLATFORMCAPI_H
#define PLATFORM_HTEQPLATFORMCAPI_H

#include "platform/ZrPlatformExport.h"

// The narrowest way into the library: a platform path in, a JSON text out.
//
// Rules of these three functions:
// - A returned text belongs to the caller, who gives it back through
//   hteq_free_json_string (free() is not a valid way to release it).
// - A null result means the platform could not be attached (a missing or
//   unreadable hardware or software file); the reason was sent as a message.
// - Exceptions are not caught here: a missing descriptor raises
//   HEXFileNotFoundException, an invalid one teq_platform::PlatformParseException,
//   and a null path std::logic_error. A C++ host catches them; a C host should
//   pass existing files.

#ifdef __cplusplus
extern "C" {
#endif

// The full JSON document of the platform, or null.
ZR_PLATFORM_API char* hteq_get_platform_json(const char* file);
// "uniqueName", "file" and "description" only, after a full load; or null.
ZR_PLATFORM_API char* hteq_get_short_platform_json(const char* file);
// Releases a text from the two above; null is allowed.
ZR_PLATFORM_API void hteq_free_json_string(char* text);

#ifdef __cplusplus
}
#endif

#endif
