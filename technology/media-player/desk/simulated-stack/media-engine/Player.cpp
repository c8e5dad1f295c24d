#include "Player.h"

#include "CapabilityTexts.h"
#include <MPL_MediaPlayerLib.h>

namespace sim
{
namespace
{

constexpr double kSeekRate = 8;
// A step back within this time goes to the track before, later to the beginning of the current one.
constexpr double kRestartAfterMs = 3000;

} // namespace

// Connected to the modes before anybody else, so that what they change is done when others hear of it.
Player::Player(PlayQueue* aQueue, QObject* aParent)
    : QObject(aParent), m_Queue(aQueue), m_State(MPL::MPL_PLAY_STATE_STOPPED)
{
    connect(&m_Clock, &TrackClock::Ticked, this, &Player::OnTick);
    connect(&m_Modes, &PlayModes::ShuffleChanged, this, &Player::OnQueueChanged);
    connect(&m_Modes, &PlayModes::SpeedChanged, this, &Player::OnSpeedChanged);
    connect(&m_Modes, &PlayModes::Failed, this, &Player::Failed);
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
    return m_Order.Next(m_Queue->Index(), m_Modes.RepeatsQueue()) >= 0;
}

bool Player::Next()
{
    if (FailIfEmpty()) {
        return false;
    }
    const int next = m_Order.Next(m_Queue->Index(), m_Modes.RepeatsQueue());
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
    const int previous = m_Clock.PositionMs() > kRestartAfterMs
                             ? -1
                             : m_Order.Previous(m_Queue->Index(), m_Modes.RepeatsQueue());
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
    const qint64 target = static_cast<qint64>(m_Clock.PositionMs()) + aMs;
    return SeekTo(qBound(qint64(0), target, qint64(m_Queue->Current().lengthMs)));
}

bool Player::SetSeekMode(const QString& aMode)
{
    if (!m_Modes.Check(aMode, OptionsOf(MPL::MPL_SEEK_MODES), QStringLiteral("seek mode")) || FailIfEmpty()) {
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

void Player::OnTick(double aBeforeMs)
{
    const double now = m_Clock.PositionMs();
    if (now < 0) {
        SetState(MPL::MPL_PLAY_STATE_PLAYING);
        SetPosition(0);
    } else if (now >= m_Queue->Current().lengthMs && m_Clock.Rate() > 0) {
        TrackEnded();
    } else if (static_cast<qint64>(now) / 1000 != static_cast<qint64>(aBeforeMs) / 1000) {
        Q_EMIT PositionChanged(Position());
    }
}

void Player::TrackEnded()
{
    if (m_Modes.RepeatsTrack()) {
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
    m_Order.Reset(m_Queue->Count(), m_Modes.Shuffles(), m_Queue->Index());
    if (m_Queue->IsEmpty()) {
        SetState(MPL::MPL_PLAY_STATE_STOPPED);
    }
}

void Player::OnIndexChanged()
{
    m_Finished = false;
    SetPosition(0);
}

void Player::OnSpeedChanged()
{
    m_Clock.Tick(); // what has passed, passed at the old speed
    m_Clock.SetRate(Rate());
}

void Player::SetPosition(qint64 aPositionMs)
{
    m_Clock.SetPosition(static_cast<double>(aPositionMs));
    Q_EMIT PositionChanged(Position());
}

void Player::SetState(const QString& aState)
{
    if (m_State != aState) {
        m_State = aState;
        m_Clock.SetRate(Rate());
        Q_EMIT StateChanged(aState);
    }
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

// Milliseconds of the track per millisecond of time.
double Player::Rate() const
{
    if (m_State == MPL::MPL_PLAY_STATE_FAST_FORWARDING) {
        return kSeekRate;
    }
    if (m_State == MPL::MPL_PLAY_STATE_REWINDING) {
        return -kSeekRate;
    }
    return m_State == MPL::MPL_PLAY_STATE_PLAYING ? m_Modes.Rate() : 0;
}

} // namespace sim
