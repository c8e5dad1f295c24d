#include "LookUp.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QXmlStreamReader>

namespace sim
{
namespace
{

constexpr int kMaximumObjects = 1000;

} // namespace

LookUp::LookUp(const QDBusConnection& aBus, const QString& aService, int aLimitMs)
    : m_Bus(aBus), m_Service(aService), m_LimitMs(aLimitMs)
{
    m_Time.start();
    Ask(QStringLiteral("/"));
}

void LookUp::Ask(const QString& aPath)
{
    m_Asked.insert(aPath);
    m_Unanswered.insert(aPath);
    QDBusMessage call = QDBusMessage::createMethodCall(m_Service, aPath,
                                                       QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                                       QStringLiteral("Introspect"));
    call.setAutoStartService(false);
    const int timeLeft = qMax(1, m_LimitMs - static_cast<int>(m_Time.elapsed()));
    auto* watcher = new QDBusPendingCallWatcher(m_Bus.asyncCall(call, timeLeft), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, aPath] {
        watcher->deleteLater();
        Take(aPath, *watcher);
    });
}

void LookUp::AskInTime(const QString& aPath)
{
    if (m_Time.elapsed() < m_LimitMs) {
        Ask(aPath);
    } else {
        m_WasCutOff = true;
    }
}

void LookUp::Take(const QString& aPath, const QDBusPendingCallWatcher& aWatcher)
{
    m_Unanswered.remove(aPath);
    const QDBusPendingReply<QString> reply = aWatcher;
    if (reply.isValid()) {
        Q_EMIT Answered(reply.reply().service());
        Read(aPath, reply.value());
    } else if (reply.error().type() == QDBusError::NoReply) {
        m_WasCutOff = true;
    }
    if (m_Unanswered.isEmpty()) {
        Q_EMIT Finished();
    }
}

void LookUp::Read(const QString& aPath, const QString& aXml)
{
    const QString prefix = aPath == QLatin1String("/") ? aPath : aPath + QLatin1Char('/');
    QXmlStreamReader reader(aXml);
    reader.readNextStartElement(); // the object itself
    while (reader.readNextStartElement()) {
        const QString name = reader.attributes().value(QLatin1String("name")).toString();
        if (reader.name() == QLatin1String("interface") &&
            name == QLatin1String("com.talvex.DBus.MediaPlayer.MediaSource")) {
            m_Found.append(aPath);
        } else if (reader.name() == QLatin1String("node") && !name.isEmpty() &&
                   !m_Asked.contains(prefix + name) && m_Asked.size() < kMaximumObjects) {
            AskInTime(prefix + name);
        }
        reader.skipCurrentElement();
    }
}

} // namespace sim
