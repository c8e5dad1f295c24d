// Records the jobs that systemd is given, in order.
#pragma once

#include <QMutex>
#include <QObject>
#include <QStringList>

class QDBusObjectPath;

/// Listens on the application's main thread, so the test's thread may block.
class JobRecorder : public QObject
{
    Q_OBJECT

public:
    JobRecorder();

    /// The lifecycle-manager names of the media services that got a job since the last call, in order. Every
    /// job that was there before the call is in it.
    QStringList TakeServices();

public Q_SLOTS:
    void OnJobNew(uint aId, const QDBusObjectPath& aJob, const QString& aUnit);

private:
    QMutex m_Mutex;
    QStringList m_Services;
};
