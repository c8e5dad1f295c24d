// What each D-Bus interface consists of, as its users know it.
#pragma once

#include <MPL_Proxies.h>

#include <QDBusConnection>

#include <functional>
#include <memory>
#include <vector>

using Factory = std::function<std::unique_ptr<QDBusAbstractInterface>(const QDBusConnection&)>;

// The members as "Name(signature of the arguments)->signature of the reply", separated by blanks.
struct Interface {
    const char* name;
    Factory make;
    const char* methods;
    const char* signalMembers;
};

template <class Proxy>
std::unique_ptr<QDBusAbstractInterface> Make(const QDBusConnection& aConnection)
{
    return std::make_unique<Proxy>(QString(), "/object", aConnection);
}

inline const std::vector<Interface> kInterfaces{
    {"MediaManager", Make<ComTalvexDBusMediaPlayerMediaManagerInterface>,
     "GetActiveMediaSource()->(ss) GetAvailableMediaSources()->a(ss) SetActiveMediaSource((ss))->",
     "ActiveMediaSourceChanged(ss) MediaSourceAdded(ss) MediaSourceRemoved(ss)"},
    {"MediaSource", Make<ComTalvexDBusMediaPlayerMediaSourceInterface>,
     "ActivatePreset(a{ss})->u GetCapabilities()->as GetCapability(s)->o GetDeviceBusNumber()->s "
     "GetDeviceId()->s GetDevicePath()->s GetMediaSourceStatus()->s GetPresetContext()->a{ss} "
     "GetSourceName()->s GetSourceType()->s RemoteMessageReceived(a{sv})->",
     "SignalNewPresetContext(sa{ss}) SignalPresetActivated(ss) SignalStatusChanged(s) "
     "SignalUpdatePresetContext(ssa{ss})"},
    {"IndexerInfo", Make<ComTalvexDBusMediaPlayerIndexerInfoInterface>,
     "GetProgress()->u GetStatus()->s Reindex()->b", "SignalProgressChanged(u) SignalStatusChanged(s)"},
    {"MMEMount", Make<ComTalvexDBusMediaPlayerMMEMountInterface>,
     "Dismount(s)-> GetMountedDeviceList()->aa{sv} MountPath(s)->",
     "SignalDeviceDismounted(a{sv}) SignalDeviceMounted(a{sv})"},
    {"MediaSourceFactorySimulation", Make<ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface>,
     "AddMassStorageDevice(ss)-> ChangePlayQueue(u)-> PublishPresetData()-> "
     "RemoveMassStorageDevice(ss)-> "
     "UpdatePresetSecondaryData(s)-> UpdatePresetStateData(ss)->",
     ""},
    {"PlaybackControl", Make<ComTalvexDBusMediaPlayerPlaybackControlInterface>,
     "GetAllSpeedModes()->as GetAvailableChapters()->s GetBufferedInfo()->(xxtuu) GetCurrentChapter()->u "
     "GetFunctionalities()->s GetPlayState()->s GetRepeatMode()->s GetShuffleMode()->s GetSpeedMode()->s "
     "IsDistributedPlayback()->b Jump(i)-> NextChapter()->b NextTrack()->b Pause()->b "
     "PreviousChapter()->b "
     "PreviousTrack()->b Resume()->b ReturnToLive()->b SeekTitleChapter(uu)->b SeekToTime(u)-> "
     "SeekTrack(s)->b SetRepeatMode(s)->b SetShuffleMode(s)->b SetSpeedMode(s)->b SetTrackIndex(u)->b",
     "SignalAvailableChaptersChanged(s) SignalChapterChanged(u) SignalDistributedPlaybackChanged(b) "
     "SignalEvent(s) SignalFunctionalitiesChanged(s) SignalPlayStateChanged(s) SignalPlaybackFinished() "
     "SignalRepeatModeChanged(s) SignalShuffleModeChanged(s) SignalSpeedModeChanged(s) "
     "SignalTrackBufferedInfoChanged((xxtuu))"},
    {"MediaInfo", Make<ComTalvexDBusMediaPlayerMediaInfoInterface>,
     "GetBufferInfo()->a{sv} GetCurrentMediaArt()->s GetCurrentPlayTime()->u GetCurrentStationArt()->s "
     "GetCurrentTrackInfo()->a{sv} GetFunctionalities()->s",
     "SignalBufferInfoChanged(a{sv}) SignalEvent(s) SignalFunctionalitiesChanged(s) "
     "SignalMediaArtChanged() SignalStationArtChanged() SignalTrackCurrentPlayTimeChanged(u) "
     "SignalTrackInfoChanged(a{sv})"},
    {"PlayQueue", Make<ComTalvexDBusMediaPlayerPlayQueueInterface>,
     "GetCurrentTrackIndex()->u GetFunctionalities()->s GetNumberOfTracks()->u "
     "LoadRemotePlayQueue(a{sv})->b RequestTrackInfo(uu)->b",
     "SignalEvent(s) SignalFunctionalitiesChanged(s) SignalPlayQueueChanged() SignalPlayQueueError(s) "
     "SignalPlayQueuePushReceived(a{sv}s) SignalResults(aa{sv}) SignalTrackIndexChanged(u)"},
    {"Browser", Make<ComTalvexDBusMediaPlayerBrowserInterface>,
     "RequestStart((su))-> RequestBack((su))-> RequestCancel((su))-> RequestBrowserHierarchy((su))-> "
     "RequestCharacterIndex((su))-> RequestFunctionalities((su))-> RequestNumberOfRecords((su))-> "
     "RequestPlayAll((su))-> RequestRecordsByTransactionId((su)uu)-> RequestSearchFor((su)sasus)-> "
     "RequestSelectRecord((su)u)-> RequestRecords(uuu)->b RequestCurrentPlayingIndex()-> Back()->b "
     "Cancel()->b GetBrowserHierarchy()->a(ssuu) GetCharacterIndex()->aa{sv} "
     "GetCurrentBrowseHierarchyUrl()->s GetCurrentResultsSortMode()->s GetFunctionalities()->s "
     "GetNumberOfRecords()->u PlayAll()->b SearchFor(sasus)->b SelectRecord(u)->b SelectRecordById(t)->b "
     "SetCurrentResultsSortMode(s)->b Start()->u",
     "SignalReplyStart((su)su) SignalReplyBack((su)s) SignalReplyCancel((su)s) "
     "SignalReplyBrowserHierarchy((su)sa(ssuu)) SignalReplyCharacterIndex((su)saa{sv}) "
     "SignalReplyFunctionalities((su)ss) SignalReplyNumberOfRecords((su)su) SignalReplyPlayAll((su)s) "
     "SignalReplyRecords((su)saa{sv}) SignalReplySearchFor((su)sb) SignalReplySelectRecord((su)s) "
     "SignalBrowsingResults(aa{sv}u) SignalCurrentPlayingIndex(i) "
     "SignalBrowseResultItemMetadataChanged(sua{sv}) SignalBrowseStatus(ua{ss}) "
     "SignalBrowserHierarchy(a(ssuu)s) SignalBrowserHierarchyUrl(s) SignalBrowsingResultsChanged(s) "
     "SignalCurrentResultsSortModeChanged(s) SignalEvent(s) SignalFunctionalitiesChanged(s)"},
};
