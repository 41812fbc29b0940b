#ifndef PLATFORM_SRC_REPOSITORY_SUPPORTPOLICY_H
#define PLATFORM_SRC_REPOSITORY_SUPPORTPOLICY_H

// What the support policy's exception list offers inside the library.

namespace teq {
namespace platform {
namespace support_policy {

// True when some entry of the exception list names this process's product:
// only then may the list look a key up in a platform's document.
bool exceptionListNamesProduct();

// Forgets the list's path and product, which are otherwise taken on first use
// and kept for the process; for tests that change the application root.
void resetExceptionListLookup();

}  // namespace support_policy
}  // namespace platform
}  // namespace teq

#endif
