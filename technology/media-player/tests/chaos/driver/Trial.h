/// One run of a schedule in a sandbox of its own.
#pragma once

#include "Observations.h"
#include "Schedule.h"

#include <QObject>
#include <QProcess>
#include <QTimer>

#include <functional>

namespace chaos
{

class Trial : public QObject
{
public:
    using Done = std::function<void(const Observations& aSeen)>;

    /// Starts a run, which calls `aDone` when its sandbox has ended. One in which a call takes
    /// far longer than any may is ended.
    static void Start(const Schedule& aSchedule, double aSpeed, const Done& aDone);

private:
    Trial(const Schedule& aSchedule, double aSpeed, const Done& aDone);
    void Finish();

    double m_Speed;
    Done m_Done;
    bool m_WasHung = false;
    QProcess m_Process;
    QTimer m_Limit;
};

/// The same, and waits for its end.
Observations Try(const Schedule& aSchedule, double aSpeed);

/// The command that repeats a schedule's run.
QString CommandFor(const Schedule& aSchedule);

} // namespace chaos
