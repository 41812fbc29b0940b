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
    RepoPlatform p;
    p.name = "dc";
    p.part = kPartA;
    p.designIntent = "dataCenter,serverManaged";
    dcOld_ = writeRepoPlatform(user_ + "/old", p);
    p.versionMajor = 2;
    p.designIntent = "dataCenter";
    dcNew_ = writeRepoPlatform(user_ + "/new", p);
    RepoPlatform bare;
    bare.name = "bare";
    bare.board = "card2";
    bare.designIntent = "";
    bare.unified = true;
    writeRepoPlatform(user_, bare);
    RepoPlatform emb;
    emb.name = "emb";
    emb.board = "eboard";
    emb.designIntent = "embedded";
    emb.part = kPartB;
    emb.includePaths = "/inc/emb";
    emb.boardPart = "acme:eboard:1.0";
    emb_ = writeRepoPlatform(user_, emb);
    RepoPlatform uni;
    uni.name = "uni";
    uni.vendor = "beta";
    uni.board = "ucard";
    uni.versionMinor = 5;
    uni.designIntent = "externalHost";
    uni.unified = true;
    uni.hostInterface = "pcie";
    uni.part = kPartA;
    uni.runtimes = "cpp";
    writeRepoPlatform(factory_, uni);
    RepoPlatform axi;
    axi.name = "axi";
    axi.board = "aboard";
    axi.unified = true;
    axi.hostInterface = "axi";
    axi.part = kPartB;
    writeRepoPlatform(factory_, axi);
    mgr()->clearAllPlatforms();
    mgr()->addPlatformsFromDirs({user_, factory_});
  }
  ~QueryRepo() override {
    mgr()->clearAllPlatforms();
    mgr()->clearParsingErrorMsgs();
  }

  static HTEQPlatformMgr* mgr() { return HTEQPlatformMgr::getGlobalNoInit(); }

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
