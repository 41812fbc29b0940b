#ifndef TESTS_REPOSITORY_QUERYREPO_H
#define TESTS_REPOSITORY_QUERYREPO_H

// The repository the query tests ask about, registered in the global manager
// for one test. Six platforms, two of them in the install repository of the
// application root:
//   user/old/dc   acme:card:dc:1.0    data center + server managed  part archa  not unified
//   user/new/dc   acme:card:dc:2.0    data center                   part archa  not unified
//   user/bare     acme:card2:bare:1.0 no intent, no device                      unified, no host interface
//   user/emb      acme:eboard:emb:1.0 embedded                      part archb  not unified, include paths
//   app/platforms/uni beta:ucard:uni:1.5 external host, runtime cpp part archa  unified, pcie
//   app/platforms/axi acme:aboard:axi:1.0 data center                part archb  unified, axi

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformMgr.h"
#include "support/RepoBuilder.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

namespace zr_test {

const char kPartA[] = "archa:dev1:pkg1:-2";
const char kPartB[] = "archb:dev2:pkg2:-1:i";

class QueryRepo : public ::testing::Test {
 protected:
  QueryRepo() : root_(HUTFile::getCanonicalName(dir_.path())), envGuard_(&env_) {
    user_ = root_ + "/user";
    factory_ = root_ + "/app/platforms";
    env_.setAppRoots({root_ + "/app"});
    RepoPlatform dc = platform("dc", "card", "dataCenter,serverManaged", kPartA, false);
    dcOld_ = writeRepoPlatform(user_ + "/old", dc);
    dc.versionMajor = 2;
    dc.designIntent = "dataCenter";
    dcNew_ = writeRepoPlatform(user_ + "/new", dc);
    writeRepoPlatform(user_, platform("bare", "card2", "", "", true));
    RepoPlatform emb = platform("emb", "eboard", "embedded", kPartB, false);
    emb.includePaths = "/inc/emb";
    emb.boardPart = "acme:eboard:1.0";
    emb_ = writeRepoPlatform(user_, emb);
    RepoPlatform uni = platform("uni", "ucard", "externalHost", kPartA, true);
    uni.vendor = "beta";
    uni.versionMinor = 5;
    uni.hostInterface = "pcie";
    uni.runtimes = "cpp";
    writeRepoPlatform(factory_, uni);
    RepoPlatform axi = platform("axi", "aboard", "dataCenter", kPartB, true);
    axi.hostInterface = "axi";
    writeRepoPlatform(factory_, axi);
    mgr()->clearAllPlatforms();
    mgr()->addPlatformsFromDirs({user_, factory_});
  }
  ~QueryRepo() override {
    mgr()->clearAllPlatforms();
    mgr()->clearParsingErrorMsgs();
  }

  static HTEQPlatformMgr* mgr() { return HTEQPlatformMgr::getGlobalNoInit(); }

  static RepoPlatform platform(const char* name, const char* board, const char* intent, const char* part,
                               bool unified) {
    RepoPlatform p = namedPlatform(name);
    p.board = board;
    p.designIntent = intent;
    p.part = part;
    p.unified = unified;
    return p;
  }

  // "name:version" of each platform's hardware, sorted.
  static std::vector<std::string> labels(const std::vector<HTEQPlatform*>& platforms) {
    std::vector<std::string> out;
    for (const HTEQPlatform* p : platforms)
      out.push_back(p->getHardwarePlatform()->getName() + ":" + p->getHardwarePlatform()->getVersion());
    std::sort(out.begin(), out.end());
    return out;
  }
  static std::vector<std::string> sorted(std::vector<std::string> v) {
    std::sort(v.begin(), v.end());
    return v;
  }

  TempDir dir_;
  std::string root_, user_, factory_, dcOld_, dcNew_, emb_;
  HUTEnv env_;
  ScopedInstance<HUTEnv> envGuard_;
  ComMsgCapture messages_;
};

}  // namespace zr_test

#endif
