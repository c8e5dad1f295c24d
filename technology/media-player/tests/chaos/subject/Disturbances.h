/// What befalls the stack while the library works: processes killed, stopped or started anew, a bus that
/// stops or is slow, a database that is locked. It happens on the thread of the application's event loop,
/// whatever the suite's thread is blocked in.
#pragma once

#include "Step.h"

#include <QMutex>
#include <QObject>
#include <QStringList>

namespace chaos
{

class Disturbances : public QObject
{
public:
    /// From any thread: lets it happen in `aStep.at` milliseconds.
    void Arm(const Step& aStep);

    /// From any thread: what was disturbed since it was asked last. A bus that is still stopped or slow, and
    /// a database that is still locked, are named again.
    QStringList TakeDisturbed();

    /// Lets the bus run again, so that the program can end.
    void Release();

private:
    void Happen(const Step& aStep);
    void StopBus(int aMilliseconds);
    void SlowBus(int aMilliseconds);
    void LockDatabase(int aMilliseconds);
    void Strike(const Step& aStep);
    void Note(const QStringList& aWhat, bool aLasts);
    void NoteEnd(const QString& aWhat);

    QMutex m_Mutex;
    QStringList m_Disturbed;
    QStringList m_Lasting;
};

} // namespace chaos
