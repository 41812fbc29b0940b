#ifndef PLATFORM_HTEQPLATFORMMGR_H
#define PLATFORM_HTEQPLATFORMMGR_H

#include <memory>
#include <string>

#include "platform/HSTFwdIter.h"
#include "platform/HSTVector.h"
#include "platform/ZrPlatformExport.h"

class HBOBoardCDataManager;
class HTEQHardwarePlatform;
class HTEQPlatform;
class HTEQReconfigurablePartition;

// The process-wide registry of platforms: every descriptor (.zdf) and every
// loose hardware archive found in the repositories it is given, each read into
// an HTEQPlatform that the manager owns for its life. A platform that cannot
// be read is left out: a message goes out and a text for the user is added to
// the parsing errors, which only clearParsingErrorMsgs empties. Nothing a
// platform holds makes an operation throw.
//
// The project type picks the list that lookups and iteration see: 0 ("teq")
// the platforms of descriptors, 1 ("platform") those made from a hardware
// archive alone.
class ZR_PLATFORM_API HTEQPlatformMgr {
 public:
  using StringVector = HSTVector<std::string>;
  using TEQPlatformVec = HSTVector<HTEQPlatform*>;
  using TEQHardwarePlatformVec = HSTVector<HTEQHardwarePlatform*>;
  // Other values may be stored; they select no list.
  enum TEQProjectType : int { TEQ_PROJECT = 0, PLATFORM_PROJECT = 1 };

  HTEQPlatformMgr();
  ~HTEQPlatformMgr();
  HTEQPlatformMgr(const HTEQPlatformMgr&) = delete;
  HTEQPlatformMgr& operator=(const HTEQPlatformMgr&) = delete;

  // The global manager, made on first use and never freed. getGlobal scans
  // the default repositories when it makes it; getGlobalNoInit does not, and
  // a later getGlobal does not scan either.
  static HTEQPlatformMgr* getGlobal();
  static HTEQPlatformMgr* getGlobalNoInit();

  void addPlatformsFromDirs(const StringVector& dirs);
  // Only descriptors whose stem equals `name` ignoring case (all when empty);
  // loose archives are all read.
  void addPlatformsFromDirs(const std::string& name, const StringVector& dirs);
  // Deletes the platforms whose file lies directly in one of `dirs` (compared exactly).
  void removePlatformsFromDirs(const StringVector& dirs);
  // HTEQHardwarePlatformMgr::addPlatformsFromDirs; the caller owns `out`.
  void getHardwarePlatformsFromDirs(const StringVector& dirs, TEQHardwarePlatformVec& out, bool flag);

  // The first platform of the active list whose unique name equals `name`,
  // or whose base name does ignoring case, or whose file has the canonical
  // name of `name`; null if none.
  HTEQPlatform* getPlatform(const std::string& name) const;
  void getPlatforms(TEQPlatformVec& out) const;
  // Replaces `out` with the platforms of loose archives, whatever the project type.
  void getCFAPlatforms(TEQPlatformVec& out) const;
  void getUnifiedPlatforms(TEQPlatformVec& out) const;
  void getTEQPlatforms(TEQPlatformVec& out) const;
  unsigned int getNumPlatforms() const;
  HSTFwdIter<HTEQPlatform*>* createPlatformIter() const;

  void getParsingErrorMsgs(StringVector& out) const;
  void clearParsingErrorMsgs();
  void clearAllPlatforms();

  TEQProjectType getProjectTypeAsEnumVal() const { return projectType_; }
  // A type other than 0 or 1 is kept, and the active list stays as it was.
  void setProjectType(TEQProjectType type);
  // "teq", "platform", or "" for another value.
  std::string getProjectTypeAsStr() const;

  void setBoardRepoPaths(const StringVector& paths);
  void getBoardRepoPaths(StringVector& out) const;

  // "platforms" below each application root that has one, then the
  // system-wide repository if it exists; not made canonical.
  void getDefaultTeqPlatformDirs(StringVector& out) const;

 private:
  void init_();
  void addPlatformsFromDirs_(const std::string& name, const StringVector& dirs);
  void addPlatformFile_(const std::string& path);
  void addHardwarePlatformsFromDirs_(const StringVector& dirs);
  bool isExistingPlatform_(const std::string& file) const;
  bool attachHardwarePlatforms_(HTEQPlatform* platform);
  bool attachSingleHardwarePlatform_(HTEQPlatform* platform);
  bool attachReconfigurablePartition_(HTEQPlatform* platform, HTEQReconfigurablePartition* partition);
  // Checks a hardware file and reads it; null (with the reason recorded) on failure.
  HTEQHardwarePlatform* readHardwareFile_(const std::string& file, const HTEQPlatform* platform);
  bool attachSoftwarePlatforms_(HTEQPlatform* platform);
  void handleInvalidPath_(const std::string& file, const std::string& platform);
  void handleInvalidExtension_(const std::string& file, const std::string& platform);
  static HTEQPlatform* createPlatform_(HTEQHardwarePlatform* hardware);
  static void removePlatformsFromDirs_(const StringVector& dirs, TEQPlatformVec& list);
  static void deleteAll_(TEQPlatformVec& list);

  static HTEQPlatformMgr* mp_theGlobal;

  TEQPlatformVec teqPlatforms_;
  TEQPlatformVec cfaPlatforms_;
  TEQPlatformVec* activeList_;
  StringVector parsingErrorMsgs_;
  TEQProjectType projectType_ = TEQ_PROJECT;
  StringVector boardRepoPaths_;
  std::unique_ptr<HBOBoardCDataManager> boardDataManager_;
};

#endif
