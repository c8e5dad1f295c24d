// Where in its track the player is: a position that moves with time.
#pragma once

#include <QElapsedTimer>
#include <QTimer>

namespace sim
{

/// Knows no track: its position runs past the ends, and whoever listens to Ticked sets it back.
class TrackClock : public QObject
{
    Q_OBJECT
public:
    TrackClock();

    double PositionMs() const { return m_PositionMs; }
    void SetPosition(double aPositionMs);

    /// Milliseconds of the track per millisecond of time; negative: backwards, 0: it stands.
    double Rate() const { return m_Rate; }
    void SetRate(double aRate);

    /// Counts what has passed since the last tick. Called by itself while the clock runs.
    void Tick();

Q_SIGNALS:
    void Ticked(double aBeforeMs);

private:
    QTimer m_Timer;
    QElapsedTimer m_SinceTick; // valid while the clock runs
    double m_PositionMs = 0;
    double m_Rate = 0;
};

} // namespace sim
