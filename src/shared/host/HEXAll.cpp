#include "host/HEXAll.h"

#include <utility>

HEXAll::HEXAll(std::string text) : text_(std::move(text)) {}
HEXAll::~HEXAll() = default;
const char* HEXAll::what() const noexcept { return text_.c_str(); }

HEXError::~HEXError() = default;
HEXUserException::~HEXUserException() = default;
HEXDataException::~HEXDataException() = default;
HEXAlgException::~HEXAlgException() = default;

HEXFileNotFoundException::HEXFileNotFoundException(const std::string& fileName)
    : HEXUserException("file not found: '" + fileName + "'"), fileName_(fileName) {}
HEXFileNotFoundException::~HEXFileNotFoundException() = default;

HXMLException::HXMLException(const std::string& text, int lineNumber)
    : HEXAll(text), lineNumber_(lineNumber) {}
HXMLException::~HXMLException() = default;
