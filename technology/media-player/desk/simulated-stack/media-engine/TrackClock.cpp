#include "TrackClock.h"

namespace sim
{
namespace
{

constexpr int kTickMs = 50;

} // namespace

TrackClock::TrackClock()
{
    m_Timer.setInterval(kTickMs);
    m_Timer.setTimerType(Qt::PreciseTimer);
    connect(&m_Timer, &QTimer::timeout, this, &TrackClock::Tick);
}

void TrackClock::SetPosition(double aPositionMs)
{
    m_PositionMs = aPositionMs;
    if (m_SinceTick.isValid()) {
        m_SinceTick.restart();
    }
}

void TrackClock::SetRate(double aRate)
{
    m_Rate = aRate;
    if (aRate == 0) {
        m_Timer.stop();
        m_SinceTick.invalidate();
    } else {
        m_SinceTick.start();
        m_Timer.start();
    }
}

void TrackClock::Tick()
{
    const double before = m_PositionMs;
    m_PositionMs += m_Rate * static_cast<double>(m_SinceTick.isValid() ? m_SinceTick.restart() : 0);
    Q_EMIT Ticked(before);
}

} // namespace sim
