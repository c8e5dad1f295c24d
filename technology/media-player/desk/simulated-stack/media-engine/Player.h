// Plays the queue: what is played next, and whether it plays.
#pragma once

#include "PlayModes.h"
#include "PlayOrder.h"
#include "PlayQueue.h"
#include "TrackClock.h"

namespace sim
{

/// A command that makes no sense returns false, changes nothing and emits Failed. Positions are in
/// milliseconds. Works on its thread's event loop.
class Player : public QObject
{
    Q_OBJECT
public:
    Player(PlayQueue* aQueue, QObject* aParent);

    bool Resume();
    bool Pause();
    /// At the end of the order (with repeat off) there is no next track; before the first the current track
    /// starts again.
    bool Next();
    bool Previous();
    /// Plays that track of the queue from its beginning.
    bool PlayIndex(uint aIndex);
    bool SeekTo(qint64 aPositionMs);
    /// Moves by a signed time, at most to the beginning or the end of the track.
    bool Jump(int aMs);

    /// Takes a word of the seek modes.
    bool SetSeekMode(const QString& aMode);
    PlayModes& Modes() { return m_Modes; }

    QString State() const { return m_State; }
    uint Position() const { return static_cast<uint>(m_Clock.PositionMs()); }
    bool HasNext() const;

Q_SIGNALS:
    void StateChanged(const QString& aState);
    /// About once a second while playing, and whenever the position is set.
    void PositionChanged(uint aPositionMs);
    void Finished();
    /// aEvent is a word of the events, aText says what was wrong.
    void Failed(const QString& aEvent, const QString& aText);

private:
    void OnTick(double aBeforeMs);
    void TrackEnded();
    void OnQueueChanged();
    void OnIndexChanged();
    void OnSpeedChanged();
    void SetPosition(qint64 aPositionMs);
    void SetState(const QString& aState);
    bool Fail(const QString& aEvent, const QString& aText);
    bool FailIfEmpty();
    double Rate() const;

    PlayQueue* m_Queue;
    PlayOrder m_Order;
    PlayModes m_Modes;
    TrackClock m_Clock;
    QString m_State;
    bool m_Finished = false; // the next Resume starts the order anew
};

} // namespace sim
