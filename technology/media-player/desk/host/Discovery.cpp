#include "Discovery.h"

#include "IntrospectionText.h"
#include <MPL_DBusUtils.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDebug>
#include <QElapsedTimer>
#include <QHash>
#include <QQueue>
#include <QSet>

#include <algorithm>
#include <optional>

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

    // Returns whether any object answered with an introspection text; the root is asked first.
    bool Run()
    {
        Add({QStringLiteral("/"), 0});
        for (AskMore(); !m_Asked.isEmpty(); AskMore()) {
            Question question = m_Asked.dequeue();
            question.reply.waitForFinished();
            if (IsTimeUp()) {
                m_Limit = QStringLiteral("%1 ms").arg(m_Limits.time.count());
            }
            Note(question);
        }
        if (m_TooDeep) {
            m_Limit = QStringLiteral("%1 levels").arg(m_Limits.depth);
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
    struct Object {
        QString path;
        int depth; // levels below the root
    };
    struct Question {
        Object object;
        QDBusPendingReply<QString> reply;
    };

    bool IsTimeUp() const { return m_Timer.hasExpired(m_Limits.time.count()); }

    void AskMore()
    {
        // A bus lets a connection wait for only so many replies at once: 128, unless set otherwise.
        constexpr int kInFlight = 100;
        while (!m_Waiting.isEmpty() && m_Asked.size() < kInFlight && !IsTimeUp()) {
            const Object object = m_Waiting.dequeue();
            m_Asked.enqueue({object, Ask(object.path)});
        }
    }

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

    void Note(const Question& aQuestion)
    {
        // An object may vanish, or fail, while its neighbours are well.
        const auto node = aQuestion.reply.isError() ? std::nullopt : Read(aQuestion.reply.value());
        if (!node) {
            return;
        }
        ++m_Answers;
        const QString& path = aQuestion.object.path;
        if (node->interfaces.contains(m_Interface)) {
            m_Paths << path;
        }
        const QString folder = path == QLatin1String("/") ? path : path + QLatin1Char('/');
        for (const QString& child : node->children) {
            Add({folder + child, aQuestion.object.depth + 1});
        }
    }

    // Objects of one kind say the same of themselves, and to read it takes longer than to ask for it.
    std::optional<Introspection> Read(const QString& aText)
    {
        auto known = m_Known.constFind(aText);
        if (known == m_Known.constEnd()) {
            known = m_Known.insert(aText, ReadIntrospection(aText));
        }
        return *known;
    }

    void Add(const Object& aObject)
    {
        if (m_Seen.contains(aObject.path)) {
            return;
        }
        if (m_Seen.size() >= m_Limits.objects) {
            m_Limit = QStringLiteral("%1 objects").arg(m_Limits.objects);
            return;
        }
        m_Seen.insert(aObject.path);
        if (aObject.depth > m_Limits.depth) {
            m_TooDeep = true;
        } else {
            m_Waiting.enqueue(aObject);
        }
    }

    QString m_Service;
    QString m_Interface;
    QDBusConnection m_Connection;
    DiscoveryLimits m_Limits;
    QElapsedTimer m_Timer;
    QQueue<Object> m_Waiting;
    QQueue<Question> m_Asked;                             // in the same order, as replies mostly come in it
    QHash<QString, std::optional<Introspection>> m_Known; // by the text
    QSet<QString> m_Seen;
    QStringList m_Paths;
    QString m_Limit;
    bool m_TooDeep = false;
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
