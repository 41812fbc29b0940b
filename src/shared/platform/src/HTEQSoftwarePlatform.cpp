#include "platform/HTEQSoftwarePlatform.h"

#include "platform/JSONObjectWriter.h"

HTEQSoftwarePlatform::HTEQSoftwarePlatform() = default;
HTEQSoftwarePlatform::~HTEQSoftwarePlatform() = default;
void HTEQSoftwarePlatform::toJSON(teq_platform::JSONObjectWriter&) const {}
