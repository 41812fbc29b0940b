/* Java names: the main platform types drop the leading H; the helper is the
   engine helper of the IDE. */
%rename(TEQPlatformMgr) HTEQPlatformMgr;
%rename(TEQPlatform) HTEQPlatform;
%rename(TEQHardwarePlatform) HTEQHardwarePlatform;
%rename(TEQSoftwarePlatform) HTEQSoftwarePlatform;
%rename(TEQSystemConfig) HTEQSystemConfig;
%rename(TEQSystemClock) HTEQSystemClock;
%rename(TEQProcessorGroup) HTEQProcessorGroup;
%rename(TEQBootImg) HTEQBootImg;
%rename(TEQPlatformUtils) HTEQPlatformUtils;
%rename(TEQSoftwarePlatformUtils) HTEQSoftwarePlatformUtils;
%rename(TEQPlatformEngineHelper) HTEQPlatformHelper;
