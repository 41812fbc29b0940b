#ifndef PLATFORM_HTEQPLATFORMCAPI_H
#define PLATFORM_HTEQPLATFORMCAPI_H

#include "platform/ZrPlatformExport.h"

// The narrowest way into the library: a platform path in, a JSON text out.
//
// Rules of these three functions:
// - A returned text belongs to the caller, who gives it back through
//   hteq_free_json_string (free() is not a valid way to release it). The text
//   is UTF-8 JSON ending in a newline and a zero byte.
// - No C++ exception ever leaves them, so that a C host, a foreign-function
//   host or a virtual machine never aborts: every failure returns NULL.
// - A NULL result always leaves its reason in the message manager: an invalid
//   descriptor as the parser's message ("@74-9@", naming the file and line),
//   a platform file that cannot be attached as "@74-60@", and everything
//   else (a missing descriptor, named in the text; a NULL path; lack of
//   memory; any other failure) as "@74-60@" with the reason as its argument.
// - The C++ loader (teq_platform::PlatformLoader) keeps its exceptions; only
//   these entry points turn them into NULL.

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
