#include <gtest/gtest.h>

#include <cstdarg>
#include <deque>
#include <functional>
#include <new>
#include <set>
#include <stdexcept>
#include <string>

#include "host/HEXAll.h"
#include "platform_auto_wrap/ZrJni.h"

namespace {

// A JNI environment that knows a set of classes and records what is thrown.
// Like a real JVM it refuses FindClass while an exception is pending.
struct FakeJvm {
  std::set<std::string> classes{"java/lang/RuntimeException"};
  std::deque<std::string> classHandles;
  std::deque<std::u16string> strings;
  bool pending = false;
  std::string thrownClass;
  std::u16string thrownText;
  struct Throwable {
    std::string cls;
    std::u16string text;
  };
  std::deque<Throwable> throwables;
};

FakeJvm* jvm = nullptr;

std::u16string fromUtf8Ascii(const char* text) {
  return std::u16string(text, text + std::char_traits<char>::length(text));
}

jclass JNICALL findClass(JNIEnv*, const char* name) {
  if (jvm->pending || jvm->classes.count(name) == 0) {
    jvm->pending = true;  // NoClassDefFoundError
    return nullptr;
  }
  jvm->classHandles.push_back(name);
  return reinterpret_cast<jclass>(&jvm->classHandles.back());
}
const std::string& nameOf(jclass cls) { return *reinterpret_cast<std::string*>(cls); }
void JNICALL exceptionClear(JNIEnv*) { jvm->pending = false; }
void JNICALL deleteLocalRef(JNIEnv*, jobject) {}
jint JNICALL throwNew(JNIEnv*, jclass cls, const char* text) {
  jvm->pending = true;
  jvm->thrownClass = nameOf(cls);
  jvm->thrownText = fromUtf8Ascii(text);
  return 0;
}
jmethodID JNICALL getMethodID(JNIEnv*, jclass, const char* name, const char* signature) {
  static int ctor;
  return std::string(name) == "<init>" && std::string(signature) == "(Ljava/lang/String;)V"
             ? reinterpret_cast<jmethodID>(&ctor)
             : nullptr;
}
jobject JNICALL newObjectV(JNIEnv*, jclass cls, jmethodID, va_list args) {
  jstring message = va_arg(args, jstring);
  jvm->throwables.push_back({nameOf(cls), *reinterpret_cast<std::u16string*>(message)});
  return reinterpret_cast<jobject>(&jvm->throwables.back());
}
jint JNICALL throwObject(JNIEnv*, jthrowable t) {
  const auto* throwable = reinterpret_cast<FakeJvm::Throwable*>(t);
  jvm->pending = true;
  jvm->thrownClass = throwable->cls;
  jvm->thrownText = throwable->text;
  return 0;
}
jstring JNICALL newString(JNIEnv*, const jchar* units, jsize length) {
  jvm->strings.emplace_back(units, units + length);
  return reinterpret_cast<jstring>(&jvm->strings.back());
}

class ZrJniTest : public ::testing::Test {
 protected:
  ZrJniTest() {
    jvm = &state_;
    table_.FindClass = findClass;
    table_.ExceptionClear = exceptionClear;
    table_.DeleteLocalRef = deleteLocalRef;
    table_.ThrowNew = throwNew;
    table_.GetMethodID = getMethodID;
    table_.NewObjectV = newObjectV;
    table_.Throw = throwObject;
    table_.NewString = newString;
    env_.functions = &table_;
  }
  ~ZrJniTest() override { jvm = nullptr; }

  FakeJvm state_;
  JNINativeInterface_ table_{};
  JNIEnv env_{};
};

TEST_F(ZrJniTest, MapsEachKindOfExceptionInOrderAndFallsBackWithoutTheIdeClasses) {
  const std::string failed = zr_jni::kCommandFailedClass;
  const std::string oom = zr_jni::kOutOfMemoryClass;
  const std::string runtime = "java/lang/RuntimeException";
  struct Row {
    const char* what;
    std::function<void()> raise;
    bool ideClasses;
    std::string cls;
    std::u16string text;
  };
  const Row rows[] = {
      {"HEXAll", [] { throw HEXAlgException("bad state"); }, true, failed, u"bad state"},
      {"HEXAll, non-BMP narrowed", [] { throw HEXDataException("Gr\xC3\xB6\xC3\x9F\x65 \xF0\x9F\x98\x80"); },
       true, failed, u"Gr\u00F6\u00DFe \uF600"},
      {"bad_alloc", [] { throw std::bad_alloc(); }, true, oom, u"Out of memory"},
      {"std::exception", [] { throw std::out_of_range("past the end"); }, true, failed, u"past the end"},
      {"anything else", [] { throw 42; }, true, failed, u"Unknown exception occurred"},
      {"HEXAll, no IDE class", [] { throw HEXError("bad state"); }, false, runtime, u"bad state"},
      {"bad_alloc, no IDE class", [] { throw std::bad_alloc(); }, false, runtime, u"Out of memory"},
      {"anything else, no IDE class", [] { throw 42; }, false, runtime, u"Unknown exception occurred"},
  };
  for (const Row& row : rows) {
    state_.classes = {runtime};
    if (row.ideClasses) state_.classes.insert({failed, oom});
    state_.pending = true;  // an earlier exception must be cleared first
    state_.thrownClass.clear();
    try {
      row.raise();
    } catch (...) {
      zr_jni::rethrowToJava(&env_);
    }
    EXPECT_TRUE(state_.pending) << row.what;
    EXPECT_EQ(state_.thrownClass, row.cls) << row.what;
    EXPECT_TRUE(state_.thrownText == row.text) << row.what;
  }
}

}  // namespace
