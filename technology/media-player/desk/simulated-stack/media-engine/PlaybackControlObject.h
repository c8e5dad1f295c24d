// The PlaybackControl interface of a media source.
#pragma once

#include "Object.h"
#include "Player.h"
#include <MPL_Types.h>

class PlaybackControlAdaptor;

namespace sim
{

/// A transport command answers whether it took effect; one that did not is explained by an error event.
class PlaybackControlObject : public Object
{
    Q_OBJECT
public:
    PlaybackControlObject(Player* aPlayer, PlayQueue* aQueue, const FaultPlan& aFaults, QObject* aParent);

    bool Pause() { return m_Player->Pause(); }
    bool Resume() { return m_Player->Resume(); }
    bool NextTrack() { return m_Player->Next(); }
    bool PreviousTrack() { return m_Player->Previous(); }
    bool SetTrackIndex(uint aIndex) { return m_Player->PlayIndex(aIndex); }
    bool SeekTrack(const QString& aMode) { return m_Player->SetSeekMode(aMode); }
    void SeekToTime(uint aTimeMs) { m_Player->SeekTo(aTimeMs); }
    void Jump(int aMs) { m_Player->Jump(aMs); }
    bool ReturnToLive();

    QString GetPlayState() const { return m_Player->State(); }
    QString GetRepeatMode() const { return m_Player->Modes().Repeat(); }
    QString GetShuffleMode() const { return m_Player->Modes().Shuffle(); }
    QString GetSpeedMode() const { return m_Player->Modes().Speed(); }
    QStringList GetAllSpeedModes() const;
    bool SetRepeatMode(const QString& aMode) { return m_Player->Modes().SetRepeat(aMode); }
    bool SetShuffleMode(const QString& aMode) { return m_Player->Modes().SetShuffle(aMode); }
    bool SetSpeedMode(const QString& aMode) { return m_Player->Modes().SetSpeed(aMode); }

    QString GetAvailableChapters() const;
    uint GetCurrentChapter() const;
    bool NextChapter() { return ToChapter(GetCurrentChapter() + 1); }
    bool PreviousChapter() { return ToChapter(GetCurrentChapter() - 1); }
    /// A title is a track of the queue, numbered from 1 like the chapters.
    bool SeekTitleChapter(uint aTitle, uint aChapter);

    MPL::BufferedMedia GetBufferedInfo() const;
    QString GetFunctionalities() const;
    bool IsDistributedPlayback() const { return m_Queue->IsRemote(); }

    void SendEvent(const QString& aType, const QString& aEvent, const QString& aText);

private:
    bool ToChapter(uint aChapter);
    void OnTrackChanged();
    void UpdateChapter();
    void UpdateFunctionalities();

    Player* m_Player;
    PlayQueue* m_Queue;
    PlaybackControlAdaptor* m_Adaptor;
    uint m_Chapter = 0;        // as last announced
    QString m_Functionalities; // as last announced
};

} // namespace sim
