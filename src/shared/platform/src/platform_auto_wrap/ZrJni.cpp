#include "platform_auto_wrap/ZrJni.h"

#include <new>
#include <stdexcept>
#include <vector>

#include "host/HEXAll.h"
#include "host/HI18N.h"

namespace zr_jni {

namespace {

constexpr const char* kRuntimeExceptionClass = "java/lang/RuntimeException";

// ThrowNew of `className`, else of RuntimeException when the class is not
// there (FindClass leaves a NoClassDefFoundError pending, which is dropped).
void throwNew(JNIEnv* env, const char* className, const char* text) noexcept {
  env->ExceptionClear();
  jclass cls = env->FindClass(className);
  if (cls == nullptr) {
    env->ExceptionClear();
    cls = env->FindClass(kRuntimeExceptionClass);
    if (cls == nullptr) return;
  }
  env->ThrowNew(cls, text);
  env->DeleteLocalRef(cls);
}

// Raises CommandFailedException with `text`. The object is made through the
// String constructor so that the text keeps every character; without the
// class or the constructor the text goes to RuntimeException.
void throwCommandFailed(JNIEnv* env, const std::string& text) noexcept {
  env->ExceptionClear();
  jclass cls = env->FindClass(kCommandFailedClass);
  jmethodID ctor = nullptr;
  if (cls != nullptr) ctor = env->GetMethodID(cls, "<init>", "(Ljava/lang/String;)V");
  if (ctor == nullptr) {
    env->ExceptionClear();
    if (cls != nullptr) env->DeleteLocalRef(cls);
    throwNew(env, kRuntimeExceptionClass, text.c_str());
    return;
  }
  jstring message = toJava(env, text);
  if (message == nullptr) {  // toJava has raised the reason
    env->DeleteLocalRef(cls);
    return;
  }
  auto exception = static_cast<jthrowable>(env->NewObject(cls, ctor, message));
  if (exception != nullptr) {
    env->Throw(exception);
    env->DeleteLocalRef(exception);
  }
  env->DeleteLocalRef(message);
  env->DeleteLocalRef(cls);
}

}  // namespace

bool fromJava(JNIEnv* env, jstring in, std::string& out) noexcept {
  const jsize length = env->GetStringLength(in);
  const jchar* units = env->GetStringChars(in, nullptr);
  if (units == nullptr) return false;  // OutOfMemoryError is pending
  bool ok = true;
  try {
    std::wstring wide(units, units + length);
    env->ReleaseStringChars(in, units);
    units = nullptr;
    out = HI18N::convert(wide);
  } catch (...) {
    if (units != nullptr) env->ReleaseStringChars(in, units);
    rethrowToJava(env);
    ok = false;
  }
  return ok;
}

jstring toJava(JNIEnv* env, const std::string& text) noexcept {
  try {
    const std::wstring wide = HI18N::convert(text);
    std::vector<jchar> units;
    units.reserve(wide.size());
    for (wchar_t c : wide) units.push_back(static_cast<jchar>(c));
    return env->NewString(units.data(), static_cast<jsize>(units.size()));
  } catch (const std::bad_alloc&) {
    throwNew(env, kOutOfMemoryClass, "Out of memory");
  } catch (...) {
    throwNew(env, kCommandFailedClass, "Unknown exception occurred");
  }
  return nullptr;
}

void rethrowToJava(JNIEnv* env) noexcept {
  try {
    throw;
  } catch (const HEXAll& e) {
    throwCommandFailed(env, e.getText());
  } catch (const std::bad_alloc&) {
    throwNew(env, kOutOfMemoryClass, "Out of memory");
  } catch (const std::exception& e) {
    throwCommandFailed(env, e.what());
  } catch (...) {
    throwNew(env, kCommandFailedClass, "Unknown exception occurred");
  }
}

}  // namespace zr_jni
