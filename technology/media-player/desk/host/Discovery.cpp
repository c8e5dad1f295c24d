#include "Discovery.h"

#include "IntrospectionText.h"
#include <MPL_DBusUtils.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDebug>
#include <QElapsedTimer>
#include <QSet>
#include <QVector>

#include <algorithm>

namespace MPL::Detail
{

namespace
{

// A walk from the root, level by level. It waits by blocking: no thread of ours needs an event loop for it.
class Walk
{
public:
    Walk(const QString& aService, const QString& aInterface, const QDBusConnection& aConnection,
         const DiscoveryLimits& aLimits)
        : m_Service(aService), m_Interface(aInterface), m_Connection(aConnection), m_Limits(aLimits)
    {
        m_Timer.start();
    }

    // Returns whether the root answered with an introspection text.
    bool Run()
    {
        QStringList level{QStringLiteral("/")};
        m_Seen.insert(level.first());
        for (int depth = 0; !level.isEmpty(); ++depth) {
            if (depth > m_Limits.depth) {
                m_Limit = QStringLiteral("%1 levels").arg(m_Limits.depth);
                break;
            }
            level = LookAt(level);
        }
        return m_Answers > 0;
    }

    // In the order of the alphabet, as services list their objects in any order.
    QStringList Paths() const
    {
        QStringList paths = m_Paths;
        paths.sort();
        return paths;
    }

    // Which limit has cut the walk short; empty when none has.
    QString Limit() const { return m_Limit; }

private:
    // Looks at all objects of one level and returns those of the next one.
    QStringList LookAt(const QStringList& aLevel)
    {
        // A bus lets a connection wait for only so many replies at once: 128, unless set otherwise.
        constexpr int kInFlight = 100;
        QStringList next;
        for (int first = 0; first < aLevel.size() && !IsTimeUp(); first += kInFlight) {
            const QStringList batch = aLevel.mid(first, kInFlight);
            QVector<QDBusPendingReply<QString>> replies;
            for (const QString& path : batch) {
                replies << Ask(path);
            }
            for (int i = 0; i < batch.size(); ++i) {
                replies[i].waitForFinished();
                Note(batch[i], replies[i], next);
            }
        }
        return next;
    }

    bool IsTimeUp() const { return m_Timer.hasExpired(m_Limits.time.count()); }

    QDBusPendingReply<QString> Ask(const QString& aPath) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            m_Service, aPath, QStringLiteral("org.freedesktop.DBus.Introspectable"),
            QStringLiteral("Introspect"));
        call.setAutoStartService(false);
        const qint64 left = std::max<qint64>(m_Limits.time.count() - m_Timer.elapsed(), 0);
        // Qt's timers may be a twentieth early; a call must not end before the walk's own time is up.
        return m_Connection.asyncCall(call, static_cast<int>(left + left / 16 + 1));
    }

    void Note(const QString& aPath, const QDBusPendingReply<QString>& aReply, QStringList& aNext)
    {
        if (IsTimeUp()) {
            m_Limit = QStringLiteral("%1 ms").arg(m_Limits.time.count());
        }
        Introspection introspection;
        // An object may vanish, or fail, while its neighbours are well.
        if (aReply.isError() || !ReadIntrospection(aReply.value(), introspection)) {
            return;
        }
        ++m_Answers;
        if (introspection.interfaces.contains(m_Interface)) {
            m_Paths << aPath;
        }
        for (const QString& child : introspection.children) {
            const QString childPath =
                (aPath == QLatin1String("/") ? QString() : aPath) + QLatin1Char('/') + child;
            if (m_Seen.contains(childPath)) {
                continue;
            }
            if (m_Seen.size() >= m_Limits.objects) {
                m_Limit = QStringLiteral("%1 objects").arg(m_Limits.objects);
                return;
            }
            m_Seen.insert(childPath);
            aNext << childPath;
        }
    }

    QString m_Service;
    QString m_Interface;
    QDBusConnection m_Connection;
    DiscoveryLimits m_Limits;
    QElapsedTimer m_Timer;
    QSet<QString> m_Seen;
    QStringList m_Paths;
    QString m_Limit;
    int m_Answers = 0;
};

} // namespace

bool FindObjects(const QString& aService, const QString& aInterface, const QDBusConnection& aConnection,
                 const DiscoveryLimits& aLimits, QStringList& aPaths)
{
    Walk walk(aService, aInterface, aConnection, aLimits);
    const bool answered = walk.Run();
    if (!walk.Limit().isEmpty()) {
        qWarning().noquote() << "MPL::FindServiceObjectPathsByInterface -- the walk through" << aService
                             << "stopped at" << walk.Limit() << "-- it hangs or has no end of objects";
    }
    if (answered) {
        aPaths = walk.Paths();
    }
    return answered;
}

} // namespace MPL::Detail

bool MPL::FindServiceObjectPathsByInterface(const QString& aServiceName, const QString& aInterfaceName,
                                            const QDBusConnection& aConnection, QStringList& aPaths)
{
    return Detail::FindObjects(aServiceName, aInterfaceName, aConnection, {}, aPaths);
}

bool MPL::IsServiceRunning(const QString& aServiceName, const QDBusConnection& aConnection)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    call << aServiceName;
    // The bus daemon answers at once or, when it hangs, never.
    constexpr int kTimeout = 5000;
    const QDBusReply<bool> reply = aConnection.call(call, QDBus::Block, kTimeout);
    return reply.isValid() && reply.value();
}
