// Hears what an object on the bus sends, on a thread of its own, so that a test may block meanwhile.
#pragma once

#include <QDBusAbstractInterface>
#include <QDBusMessage>
#include <QMutex>
#include <QObject>
#include <QThread>
#include <QVector>
#include <QWaitCondition>

#include <functional>

namespace MPL::Detail
{

class SignalListener : public QObject
{
    Q_OBJECT

public:
    /// Hears all signals of the proxy's interface, as far as the bus has them.
    explicit SignalListener(const QDBusAbstractInterface& aProxy);
    ~SignalListener() override;

    /// False when the proxy's connection is none.
    bool IsListening() const { return m_Listening; }
    /// Where the signals come from, for people.
    QString Origin() const;
    bool IsServiceThere() const;

    /// Blocks until a message has come that `aMatches`, and takes it out. Returns false after the limit.
    bool Take(const std::function<bool(const QDBusMessage&)>& aMatches, int aLimitMs);
    /// What has come and was not taken.
    QVector<QDBusMessage> Left() const;

public Q_SLOTS:
    void Note(const QDBusMessage& aMessage);

private:
    const QDBusConnection m_Connection;
    const QString m_Service;
    const QString m_Path;
    QThread m_Thread;
    bool m_Listening = false;

    mutable QMutex m_Mutex;
    QWaitCondition m_Came;
    QVector<QDBusMessage> m_Messages; // guarded by m_Mutex
};

} // namespace MPL::Detail
