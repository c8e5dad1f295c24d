#include "PlaybackControlObject.h"

#include "CapabilityTexts.h"
#include "Chapters.h"
#include "Relay.h"
#include "sim_PlaybackControlAdaptor.h"
#include <MPL_MediaPlayerLib.h>

namespace sim
{

PlaybackControlObject::PlaybackControlObject(Player* aPlayer, PlayQueue* aQueue, const FaultPlan& aFaults,
                                             QObject* aParent)
    : Object(aFaults, aParent),
      m_Player(aPlayer),
      m_Queue(aQueue),
      m_Adaptor(Adapt<PlaybackControlAdaptor>(this)),
      m_Functionalities(GetFunctionalities())
{
    using Out = PlaybackControlAdaptor;
    PlayModes* modes = &aPlayer->Modes();
    Relay(aPlayer, &Player::StateChanged, this, m_Adaptor, &Out::SignalPlayStateChanged);
    Relay(modes, &PlayModes::RepeatChanged, this, m_Adaptor, &Out::SignalRepeatModeChanged);
    Relay(modes, &PlayModes::ShuffleChanged, this, m_Adaptor, &Out::SignalShuffleModeChanged);
    Relay(modes, &PlayModes::SpeedChanged, this, m_Adaptor, &Out::SignalSpeedModeChanged);
    Relay(aPlayer, &Player::Finished, this, m_Adaptor, &Out::SignalPlaybackFinished);
    Relay(aQueue, &PlayQueue::RemoteChanged, this, m_Adaptor, &Out::SignalDistributedPlaybackChanged);
    connect(aPlayer, &Player::Failed, this, [this](const QString& aEvent, const QString& aText) {
        SendEvent(MPL::MPL_EVENT_TYPE_ERROR, aEvent, aText);
    });
    connect(aPlayer, &Player::PositionChanged, this, &PlaybackControlObject::UpdateChapter);
    connect(aPlayer, &Player::StateChanged, this, &PlaybackControlObject::UpdateFunctionalities);
    connect(modes, &PlayModes::RepeatChanged, this, &PlaybackControlObject::UpdateFunctionalities);
    connect(modes, &PlayModes::ShuffleChanged, this, &PlaybackControlObject::UpdateFunctionalities);
    connect(aQueue, &PlayQueue::IndexChanged, this, &PlaybackControlObject::OnTrackChanged);
}

bool PlaybackControlObject::ReturnToLive()
{
    SendEvent(MPL::MPL_EVENT_TYPE_ERROR, MPL::MPL_EVENT_CHANNEL_UNAVAILABLE,
              QStringLiteral("This source plays no live programme."));
    return false;
}

QStringList PlaybackControlObject::GetAllSpeedModes() const
{
    return OptionsOf(MPL::MPL_PLAYBACK_SPEEDS);
}

QString PlaybackControlObject::GetAvailableChapters() const
{
    return ChaptersText(m_Queue->Current());
}

uint PlaybackControlObject::GetCurrentChapter() const
{
    return ChapterAt(m_Queue->Current(), m_Player->Position());
}

bool PlaybackControlObject::ToChapter(uint aChapter)
{
    if (m_Queue->Current().lengthMs == 0 || aChapter < 1 || aChapter > kChapters) {
        SendEvent(MPL::MPL_EVENT_TYPE_ERROR, MPL::MPL_EVENT_SELECT_TRACK_FAILED,
                  QStringLiteral("There is no such chapter."));
        return false;
    }
    return m_Player->SeekTo(ChapterStart(m_Queue->Current(), aChapter));
}

bool PlaybackControlObject::SeekTitleChapter(uint aTitle, uint aChapter)
{
    // Both are looked at before the track changes: a command that fails changes nothing.
    if (aChapter < 1 || aChapter > kChapters || aTitle < 1) {
        return ToChapter(0);
    }
    return m_Player->PlayIndex(aTitle - 1) && ToChapter(aChapter);
}

// Files are there as a whole: the buffer holds the track from its beginning to its end, 100 percent.
MPL::BufferedMedia PlaybackControlObject::GetBufferedInfo() const
{
    MPL::BufferedMedia info{};
    info.end = m_Queue->Current().lengthMs;
    info.total = m_Queue->Current().lengthMs;
    info.valueA = m_Queue->IsEmpty() ? 0 : 100;
    return info;
}

QString PlaybackControlObject::GetFunctionalities() const
{
    const bool any = !m_Queue->IsEmpty();
    const bool playing = m_Player->State() == MPL::MPL_PLAY_STATE_PLAYING;
    return FunctionalitiesText({
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_RESUME, any && !playing, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_PAUSE,
         any && m_Player->State() != MPL::MPL_PLAY_STATE_PAUSED,
         {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_SHUFFLE, true, OptionsOf(MPL::MPL_SHUFFLE_MODES)},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_REPEAT, true, OptionsOf(MPL::MPL_REPEAT_MODES)},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_SPEED, true, OptionsOf(MPL::MPL_PLAYBACK_SPEEDS)},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_SEEK, any, OptionsOf(MPL::MPL_SEEK_MODES)},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_SEEK_TO_TIME, any, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_JUMP, any, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_NEXT, m_Player->HasNext(), {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_PREVIOUS, any, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_INDEX, any, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_CHAPTERS, m_Queue->Current().lengthMs > 0, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_BUFFER, any, {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_DISTRIBUTED, m_Queue->IsRemote(), {}},
        {MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_RETURN_TO_LIVE, false, {}},
    });
}

void PlaybackControlObject::SendEvent(const QString& aType, const QString& aEvent, const QString& aText)
{
    Announce([this, text = EventText(aType, aEvent, aText)] { Q_EMIT m_Adaptor->SignalEvent(text); });
}

void PlaybackControlObject::OnTrackChanged()
{
    Announce([this, chapters = GetAvailableChapters(), buffered = GetBufferedInfo()] {
        Q_EMIT m_Adaptor->SignalAvailableChaptersChanged(chapters);
        Q_EMIT m_Adaptor->SignalTrackBufferedInfoChanged(buffered);
    });
    UpdateFunctionalities();
}

void PlaybackControlObject::UpdateChapter()
{
    const uint chapter = GetCurrentChapter();
    if (chapter != m_Chapter) {
        m_Chapter = chapter;
        Announce([this, chapter] { Q_EMIT m_Adaptor->SignalChapterChanged(chapter); });
    }
}

void PlaybackControlObject::UpdateFunctionalities()
{
    if (Update(m_Functionalities, GetFunctionalities())) {
        Announce([this, text = m_Functionalities] { Q_EMIT m_Adaptor->SignalFunctionalitiesChanged(text); });
    }
}

} // namespace sim
