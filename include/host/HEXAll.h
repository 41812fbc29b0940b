#ifndef HOST_HEXALL_H
#define HOST_HEXALL_H

#include <exception>
#include <string>

#include "platform/ZrPlatformExport.h"

// The exception family of the library. HEXAll is the root; each subclass names
// the kind of problem so that a caller can react to the kind without parsing
// the text:
//   HEXError                 something went wrong that is not the user's input
//   HEXUserException         a problem in the user's environment
//   HEXFileNotFoundException a file the user named does not exist
//   HEXDataException         malformed input
//   HEXAlgException          a broken internal state or an impossible request
//   HXMLException            a failed XML read or write (carries a line number)
class ZR_PLATFORM_API HEXAll : public std::exception {
 public:
  explicit HEXAll(std::string text);
  ~HEXAll() override;
  const char* what() const noexcept override;
  const std::string& getText() const { return text_; }

 private:
  std::string text_;
};

class ZR_PLATFORM_API HEXError : public HEXAll {
 public:
  using HEXAll::HEXAll;
  ~HEXError() override;
};

class ZR_PLATFORM_API HEXUserException : public HEXAll {
 public:
  using HEXAll::HEXAll;
  ~HEXUserException() override;
};

class ZR_PLATFORM_API HEXFileNotFoundException : public HEXUserException {
 public:
  explicit HEXFileNotFoundException(const std::string& fileName);
  ~HEXFileNotFoundException() override;
  const std::string& getFileName() const { return fileName_; }

 private:
  std::string fileName_;
};

class ZR_PLATFORM_API HEXDataException : public HEXAll {
 public:
  using HEXAll::HEXAll;
  ~HEXDataException() override;
};

class ZR_PLATFORM_API HEXAlgException : public HEXError {
 public:
  using HEXError::HEXError;
  ~HEXAlgException() override;
};

class ZR_PLATFORM_API HXMLException : public HEXAll {
 public:
  // lineNumber is 0 when the failure has no place in a document.
  HXMLException(const std::string& text, int lineNumber);
  ~HXMLException() override;
  int getLineNumber() const { return lineNumber_; }

 private:
  int lineNumber_;
};

#endif
