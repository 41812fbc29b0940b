// The model's children are owned by their parents: every object a factory
// creates is deleted exactly once, also when the factory fails half-way. This
// executable counts the heap blocks alive through a replaced global operator
// new, and makes the k-th allocation fail on request.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "platform/HPLAddressSegment.h"
#include "platform/HPLBoard.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HPLPort.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSystemConfig.h"

namespace {

long gLiveBlocks = 0;
// Allocations left before one fails; negative: none fails.
long gAllocationsBeforeFailure = -1;

}  // namespace

void* operator new(std::size_t size) {
  if (gAllocationsBeforeFailure == 0) {
    gAllocationsBeforeFailure = -1;
    throw std::bad_alloc();
  }
  if (gAllocationsBeforeFailure > 0) --gAllocationsBeforeFailure;
  void* p = std::malloc(size == 0 ? 1 : size);
  if (p == nullptr) throw std::bad_alloc();
  ++gLiveBlocks;
  return p;
}

void* operator new[](std::size_t size) { return ::operator new(size); }

void operator delete(void* p) noexcept {
  if (p == nullptr) return;
  --gLiveBlocks;
  std::free(p);
}

void operator delete[](void* p) noexcept { ::operator delete(p); }
void operator delete(void* p, std::size_t) noexcept { ::operator delete(p); }
void operator delete[](void* p, std::size_t) noexcept { ::operator delete(p); }

namespace {

// A long text, so that copying it allocates.
const std::string kLong(64, 'x');

struct OwnerCase {
  const char* name;
  // Builds an owner, adds children through its factories, and lets it go.
  std::function<void()> run;
};

const std::vector<OwnerCase>& ownerCases() {
  static const std::vector<OwnerCase> cases = {
      {"hardware platform children",
       [] {
         HPLPlatform p;
         p.addHardwareIPParam();
         p.addNocConnectivity()->addBusInterface()->addAddressSegment();
         p.addBusInterface()->addAddressSegment();
         p.addSystemClock();
         p.addFeatureRom();
         p.addDesignIPInstance();
         p.addReconfigPartition();
       }},
      {"archive platform children",
       [] {
         HPLPlatform p;
         p.addDevice()->getCore().addPort()->addAddressSegment(new HPLAddressSegment());
         p.addMemory();
         p.addInterface();
         p.addFile(kLong, kLong);
         p.getBoard().addDriver();
         p.getBoard().addDimmConnector(kLong, kLong, kLong, kLong, kLong, true, false);
       }},
      {"archive platform files restored",
       [] {
         HPLPlatform p;
         p.addFile("HPFM", "a.hpfm");
         std::vector<HPLFile> copies(2);
         copies[0].setName(kLong);
         p.restoreFiles_(copies);
         p.removeFile(p.findFile(""));
       }},
      {"core port removed",
       [] {
         HPLCore core;
         core.removePort(core.addPort());
         core.addPort();
       }},
      {"software platform children",
       [] {
         HTEQSoftwarePlatform sw;
         HTEQSystemConfig* config = sw.addSystemConfig();
         config->addBootImg();
         config->addProcessorGroup();
         config->addProcessorGroup(kLong);
       }},
      {"emulation children",
       [] {
         HTEQEmulations emulations;
         emulations.createEmulation(kLong)->createFile(kLong, kLong);
         emulations.createEmulation()->createFile();
         emulations.createFeatureRom();
       }},
      {"platform partitions and software",
       [] {
         HTEQPlatform platform;
         platform.addSoftwarePlatform(new HTEQSoftwarePlatform());
         auto* rp = new HTEQReconfigurablePartition(1);
         platform.addReconfigurablePartition(rp);
         rp->setHardwarePlatform(new HPLPlatform());
         platform.setHardwarePlatform(new HPLPlatform());
       }},
  };
  return cases;
}

}  // namespace

// Each allocation in turn fails, from the first until the whole case runs
// through: whatever had been created by then is gone once the owner is.
TEST(ModelOwnership, NothingLeaksWhenAnAllocationFailsOrTheOwnerGoes) {
  for (const OwnerCase& c : ownerCases()) {
    bool completed = false;
    for (long k = 0; !completed && k < 1000; ++k) {
      const long before = gLiveBlocks;
      gAllocationsBeforeFailure = k;
      try {
        c.run();
        completed = true;
      } catch (const std::bad_alloc&) {
      }
      gAllocationsBeforeFailure = -1;
      const long after = gLiveBlocks;
      ASSERT_EQ(before, after) << c.name << ", allocation " << k << " failing";
    }
    EXPECT_TRUE(completed) << c.name;
  }
}
