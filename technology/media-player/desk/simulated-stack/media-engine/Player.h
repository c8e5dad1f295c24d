// Plays the queue against a clock: play state, position and modes.
#pragma once

#include "PlayOrder.h"
#include "PlayQueue.h"

#include <QElapsedTimer>
#include <QTimer>

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

    /// Each takes a word of its group.
    bool SetSeekMode(const QString& aMode);
    bool SetRepeatMode(const QString& aMode);
    bool SetShuffleMode(const QString& aMode);
    bool SetSpeedMode(const QString& aMode);

    QString State() const { return m_State; }
    QString RepeatMode() const { return m_Repeat; }
    QString ShuffleMode() const { return m_Shuffle; }
    QString SpeedMode() const { return m_Speed; }
    uint Position() const { return static_cast<uint>(m_PositionMs); }
    bool HasNext() const;

Q_SIGNALS:
    void StateChanged(const QString& aState);
    void RepeatModeChanged(const QString& aMode);
    void ShuffleModeChanged(const QString& aMode);
    void SpeedModeChanged(const QString& aMode);
    /// About once a second while playing, and whenever the position is set.
    void PositionChanged(uint aPositionMs);
    void Finished();
    /// aEvent is a word of the events, aText says what was wrong.
    void Failed(const QString& aEvent, const QString& aText);

private:
    void Tick();
    void TrackEnded();
    void OnQueueChanged();
    void OnIndexChanged();
    void SetPosition(qint64 aPositionMs);
    void SetState(const QString& aState);
    bool Fail(const QString& aEvent, const QString& aText);
    bool FailIfEmpty();
    bool Wraps() const;
    double Rate() const;

    PlayQueue* m_Queue;
    PlayOrder m_Order;
    QTimer m_Clock;
    QElapsedTimer m_SinceTick;
    QString m_State;
    QString m_Repeat;
    QString m_Shuffle;
    QString m_Speed;
    double m_PositionMs = 0;
    bool m_Finished = false; // the next Resume starts the order anew
};

} // namespace sim
