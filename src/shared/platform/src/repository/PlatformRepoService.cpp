#include "platform/PlatformRepoService.h"

namespace teq {
namespace platform {

PlatformRepoService::~PlatformRepoService() = default;

}  // namespace platform
}  // namespace teq
