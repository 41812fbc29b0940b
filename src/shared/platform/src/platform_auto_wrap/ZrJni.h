#ifndef PLATFORM_AUTO_WRAP_ZRJNI_H
#define PLATFORM_AUTO_WRAP_ZRJNI_H

#include <jni.h>

#include <string>

// The hand-written half of the JVM binding: text conversion between Java
// strings and the library's UTF-8 strings, and the mapping of C++ exceptions
// to Java ones. The generated wrappers call these; none of them lets a C++
// exception escape, so nothing unwinds into the JVM.
namespace zr_jni {

// The Java classes the IDE supplies for library failures.
constexpr const char* kCommandFailedClass = "ui/frmwork/cmd/CommandFailedException";
constexpr const char* kOutOfMemoryClass = "ui/frmwork/COutOfMemoryException";

// Reads the UTF-16 units of `in`, widens each unit to one wide character and
// converts the result to UTF-8 with HI18N. A lone surrogate, and each half of
// a pair, becomes U+FFFD. False, with a Java exception pending, when the
// string cannot be read; `in` must not be null.
bool fromJava(JNIEnv* env, jstring in, std::string& out) noexcept;

// Converts UTF-8 text to a Java string: HI18N gives one wide character per
// code point, each narrowed to one 16-bit unit, so a character outside the
// Basic Multilingual Plane keeps only its low 16 bits. Null, with a Java
// exception pending, when the string cannot be made.
jstring toJava(JNIEnv* env, const std::string& text) noexcept;

// Raises the Java exception for the C++ exception being handled; call it only
// inside a catch block. In order: HEXAll and its family become
// CommandFailedException with the exception's text; std::bad_alloc becomes
// COutOfMemoryException "Out of memory"; another std::exception becomes
// CommandFailedException with its what() text; anything else
// CommandFailedException "Unknown exception occurred". Any pending Java
// exception is cleared first. When the IDE's class cannot be found, a
// java.lang.RuntimeException with the same text is raised instead.
void rethrowToJava(JNIEnv* env) noexcept;

}  // namespace zr_jni

#endif
