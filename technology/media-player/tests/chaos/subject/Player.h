/// Plays a schedule and tells what it saw, in lines on standard output.
#pragma once

#include "Disturbances.h"
#include "Faults.h"
#include "Observations.h"
#include "Schedule.h"

namespace chaos
{

/// Belongs to the suite's thread; the disturbances to the application's.
class Player
{
public:
    explicit Player(Disturbances& aDisturbances) : m_Disturbances(aDisturbances) {}

    void Play(const Schedule& aSchedule);

private:
    void PlayCall(const Step& aStep);

    Disturbances& m_Disturbances;
    Faults m_Faults;
    QVector<Step> m_Pending; ///< events that wait for the next call
};

} // namespace chaos
