/// One walk through the objects of a service, by introspection, for the media sources among them. Ends with
/// Finished, once; to delete it before that cancels it. A service that hangs or lies costs the time given and
/// a thousand questions at most.
#pragma once

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QStringList>

class QDBusPendingCallWatcher;

namespace sim
{

class LookUp : public QObject
{
    Q_OBJECT

public:
    /// Asks at once, and does not block.
    LookUp(const QDBusConnection& aBus, const QString& aService, int aLimitMs);

    /// The object paths of the media sources found so far.
    QStringList Found() const { return m_Found; }

    /// A question was not answered or not asked for want of time, so there may be more.
    bool WasCutOff() const { return m_WasCutOff; }

Q_SIGNALS:
    /// The connection that owns the service's name has answered.
    void Answered(const QString& aOwner);
    void Finished();

private:
    void Ask(const QString& aPath);
    void AskInTime(const QString& aPath);
    void Take(const QString& aPath, const QDBusPendingCallWatcher& aWatcher);
    void Read(const QString& aPath, const QString& aXml);

    QDBusConnection m_Bus;
    QString m_Service;
    int m_LimitMs;
    QElapsedTimer m_Time;
    QSet<QString> m_Asked;
    QSet<QString> m_Unanswered;
    QStringList m_Found;
    bool m_WasCutOff = false;
};

} // namespace sim
