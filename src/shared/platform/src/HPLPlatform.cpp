#include "platform/HPLPlatform.h"

HPLPlatform::HPLPlatform() = default;
HPLPlatform::~HPLPlatform() = default;
