#ifndef ZR_PLATFORM_EXPORT_H
#define ZR_PLATFORM_EXPORT_H

// The library is built with hidden visibility; everything a host may call is
// marked with this macro.
#if defined(__GNUC__)
#define ZR_PLATFORM_API __attribute__((visibility("default")))
#else
#define ZR_PLATFORM_API
#endif

#endif
