#include "Player.h"

#include <MPL_MediaPlayerLib.h>

#include <algorithm>

namespace sim
{
namespace
{

constexpr int kTickMs = 50;
constexpr double kSeekRate = 8;
// A step back within this time goes to the track before, later to the beginning of the current one.
constexpr double kRestartAfterMs = 3000;

template <class Words>
bool IsOneOf(const Words& aWords, const QString& aWord)
{
    return std::find(aWords.begin(), aWords.end(), aWord) != aWords.end();
}

} // namespace

Player::Player(PlayQueue* aQueue, QObject* aParent)
    : QObject(aParent),
      m_Queue(aQueue),
      m_State(MPL::MPL_PLAY_STATE_STOPPED),
      m_Repeat(MPL::MPL_REPEAT_MODE_REPEAT_MODE_OFF),
      m_Shuffle(MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_OFF),
      m_Speed(MPL::MPL_PLAYBACK_SPEED_SPEED_1X)
{
    m_Clock.setInterval(kTickMs);
    m_Clock.setTimerType(Qt::PreciseTimer);
    connect(&m_Clock, &QTimer::timeout, this, &Player::Tick);
    connect(m_Queue, &PlayQueue::Changed, this, &Player::OnQueueChanged);
    connect(m_Queue, &PlayQueue::IndexChanged, this, &Player::OnIndexChanged);
}

bool Player::Resume()
{
    if (FailIfEmpty()) {
        return false;
    }
    if (m_Finished && m_Order.First() >= 0) {
        m_Finished = false;
        m_Queue->Select(static_cast<uint>(m_Order.First()));
    }
    SetState(MPL::MPL_PLAY_STATE_PLAYING);
    return true;
}

bool Player::Pause()
{
    if (FailIfEmpty()) {
        return false;
    }
    SetState(MPL::MPL_PLAY_STATE_PAUSED);
    return true;
}

bool Player::HasNext() const
{
    return m_Order.Next(m_Queue->Index(), Wraps()) >= 0;
}

bool Player::Next()
{
    if (FailIfEmpty()) {
        return false;
    }
    const int next = m_Order.Next(m_Queue->Index(), Wraps());
    if (next < 0) {
        return Fail(MPL::MPL_EVENT_SELECT_TRACK_FAILED, QStringLiteral("There is no next track."));
    }
    return PlayIndex(static_cast<uint>(next));
}

bool Player::Previous()
{
    if (FailIfEmpty()) {
        return false;
    }
    const int previous = m_PositionMs > kRestartAfterMs ? -1 : m_Order.Previous(m_Queue->Index(), Wraps());
    return PlayIndex(previous < 0 ? m_Queue->Index() : static_cast<uint>(previous));
}

bool Player::PlayIndex(uint aIndex)
{
    const bool same = aIndex == m_Queue->Index();
    if (!m_Queue->Select(aIndex)) {
        return Fail(
            MPL::MPL_EVENT_SELECT_TRACK_FAILED,
            QStringLiteral("The queue has no track %1, it has %2.").arg(aIndex).arg(m_Queue->Count()));
    }
    if (same) {
        SetPosition(0);
    }
    m_Finished = false;
    SetState(MPL::MPL_PLAY_STATE_PLAYING);
    return true;
}

bool Player::SeekTo(qint64 aPositionMs)
{
    if (FailIfEmpty()) {
        return false;
    }
    const uint length = m_Queue->Current().lengthMs;
    if (aPositionMs > length) {
        return Fail(
            MPL::MPL_EVENT_SELECT_TRACK_FAILED,
            QStringLiteral("The track has no time %1 ms, it ends at %2 ms.").arg(aPositionMs).arg(length));
    }
    SetPosition(aPositionMs);
    return true;
}

bool Player::Jump(int aMs)
{
    const qint64 target = static_cast<qint64>(m_PositionMs) + aMs;
    return SeekTo(qBound(qint64(0), target, qint64(m_Queue->Current().lengthMs)));
}

bool Player::SetSeekMode(const QString& aMode)
{
    if (!IsOneOf(MPL::MPL_SEEK_MODES, aMode)) {
        return Fail(MPL::MPL_EVENT_UNRECOGNIZED_FORMAT, QStringLiteral("\"%1\" is no seek mode.").arg(aMode));
    }
    if (FailIfEmpty()) {
        return false;
    }
    if (aMode == MPL::MPL_SEEK_MODE_SEEK_MODE_FAST_FORWARD) {
        SetState(MPL::MPL_PLAY_STATE_FAST_FORWARDING);
    } else if (aMode == MPL::MPL_SEEK_MODE_SEEK_MODE_REWIND) {
        SetState(MPL::MPL_PLAY_STATE_REWINDING);
    } else if (m_State == MPL::MPL_PLAY_STATE_FAST_FORWARDING || m_State == MPL::MPL_PLAY_STATE_REWINDING) {
        SetState(MPL::MPL_PLAY_STATE_PLAYING);
    }
    return true;
}

bool Player::SetRepeatMode(const QString& aMode)
{
    if (!IsOneOf(MPL::MPL_REPEAT_MODES, aMode)) {
        return Fail(MPL::MPL_EVENT_UNRECOGNIZED_FORMAT,
                    QStringLiteral("\"%1\" is no repeat mode.").arg(aMode));
    }
    if (m_Repeat != aMode) {
        m_Repeat = aMode;
        Q_EMIT RepeatModeChanged(aMode);
    }
    return true;
}

bool Player::SetShuffleMode(const QString& aMode)
{
    if (!IsOneOf(MPL::MPL_SHUFFLE_MODES, aMode)) {
        return Fail(MPL::MPL_EVENT_UNRECOGNIZED_FORMAT,
                    QStringLiteral("\"%1\" is no shuffle mode.").arg(aMode));
    }
    if (m_Shuffle != aMode) {
        m_Shuffle = aMode;
        OnQueueChanged();
        Q_EMIT ShuffleModeChanged(aMode);
    }
    return true;
}

bool Player::SetSpeedMode(const QString& aMode)
{
    if (!IsOneOf(MPL::MPL_PLAYBACK_SPEEDS, aMode)) {
        return Fail(MPL::MPL_EVENT_UNRECOGNIZED_FORMAT, QStringLiteral("\"%1\" is no speed.").arg(aMode));
    }
    if (m_Speed != aMode) {
        Tick(); // what has passed, passed at the old speed
        m_Speed = aMode;
        Q_EMIT SpeedModeChanged(aMode);
    }
    return true;
}

void Player::Tick()
{
    const double before = m_PositionMs;
    m_PositionMs += Rate() * static_cast<double>(m_SinceTick.isValid() ? m_SinceTick.restart() : 0);
    if (m_PositionMs < 0) {
        SetState(MPL::MPL_PLAY_STATE_PLAYING);
        SetPosition(0);
    } else if (m_PositionMs >= m_Queue->Current().lengthMs && Rate() > 0) {
        TrackEnded();
    } else if (static_cast<qint64>(m_PositionMs) / 1000 != static_cast<qint64>(before) / 1000) {
        Q_EMIT PositionChanged(Position());
    }
}

void Player::TrackEnded()
{
    if (m_Repeat == MPL::MPL_REPEAT_MODE_REPEAT_MODE_ONE) {
        PlayIndex(m_Queue->Index());
    } else if (HasNext()) {
        Next();
    } else {
        m_Finished = true;
        SetState(MPL::MPL_PLAY_STATE_STOPPED);
        SetPosition(0);
        Q_EMIT Finished();
    }
}

void Player::OnQueueChanged()
{
    m_Order.Reset(m_Queue->Count(), m_Shuffle == MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON, m_Queue->Index());
    if (m_Queue->IsEmpty()) {
        SetState(MPL::MPL_PLAY_STATE_STOPPED);
    }
}

void Player::OnIndexChanged()
{
    m_Finished = false;
    SetPosition(0);
}

void Player::SetPosition(qint64 aPositionMs)
{
    m_PositionMs = static_cast<double>(aPositionMs);
    if (m_SinceTick.isValid()) {
        m_SinceTick.restart();
    }
    Q_EMIT PositionChanged(Position());
}

void Player::SetState(const QString& aState)
{
    if (m_State == aState) {
        return;
    }
    m_State = aState;
    if (Rate() == 0) {
        m_Clock.stop();
        m_SinceTick.invalidate();
    } else {
        m_SinceTick.start();
        m_Clock.start();
    }
    Q_EMIT StateChanged(aState);
}

bool Player::Fail(const QString& aEvent, const QString& aText)
{
    Q_EMIT Failed(aEvent, aText);
    return false;
}

bool Player::FailIfEmpty()
{
    return m_Queue->IsEmpty() &&
           !Fail(MPL::MPL_EVENT_NO_MEDIA_AVAILABLE, QStringLiteral("The play queue is empty."));
}

bool Player::Wraps() const
{
    return m_Repeat == MPL::MPL_REPEAT_MODE_REPEAT_MODE_ALL;
}

// Milliseconds of the track per millisecond of the clock.
double Player::Rate() const
{
    if (m_State == MPL::MPL_PLAY_STATE_FAST_FORWARDING) {
        return kSeekRate;
    }
    if (m_State == MPL::MPL_PLAY_STATE_REWINDING) {
        return -kSeekRate;
    }
    if (m_State != MPL::MPL_PLAY_STATE_PLAYING) {
        return 0;
    }
    if (m_Speed == MPL::MPL_PLAYBACK_SPEED_SPEED_2X) {
        return 2;
    }
    if (m_Speed == MPL::MPL_PLAYBACK_SPEED_SPEED_4X) {
        return 4;
    }
    return m_Speed == MPL::MPL_PLAYBACK_SPEED_SPEED_1_2X ? 0.5 : 1;
}

} // namespace sim
