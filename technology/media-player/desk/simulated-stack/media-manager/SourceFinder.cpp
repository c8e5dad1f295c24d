#include "SourceFinder.h"

#include <MPL_ServiceNames.h>

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QXmlStreamReader>

namespace sim
{
namespace
{

// A service that hangs or lies costs no more than this.
constexpr int kLookUpMs = 2000;
constexpr int kMaximumObjects = 1000;

const QLatin1String kObjectManager("org.freedesktop.DBus.ObjectManager");

bool IsMediaSource(const QString& aName)
{
    return aName.startsWith(QLatin1String("com.talvex.DBus.MediaPlayer.MediaSource.")) ||
           aName == QLatin1String("com.talvex.DBus.Examples.MediaSourceTest");
}

MPL::ServiceObject MakeSource(const QString& aService, const QString& aPath)
{
    return {aService, QDBusObjectPath(aPath)};
}

} // namespace

SourceFinder::SourceFinder(const QDBusConnection& aBus, QObject* aParent) : QObject(aParent), m_Bus(aBus) {}

void SourceFinder::Start()
{
    m_Bus.connect(MPL::MPL_DBUS_SERVICE_NAME, MPL::MPL_DBUS_OBJECT_PATH, MPL::MPL_DBUS_SERVICE_NAME,
                  QStringLiteral("NameOwnerChanged"), this, SLOT(OwnerChanged(QString, QString, QString)));
    for (const char* member : {"InterfacesAdded", "InterfacesRemoved"}) {
        m_Bus.connect(QString(), QString(), kObjectManager, QLatin1String(member), this,
                      SLOT(ObjectsChanged(QDBusMessage)));
    }
    // Asked for after the signal above is subscribed to, so that no service falls between the two. Until the
    // answer is in, nothing is known.
    ++m_LookUps;
    const QDBusMessage call =
        QDBusMessage::createMethodCall(MPL::MPL_DBUS_SERVICE_NAME, MPL::MPL_DBUS_OBJECT_PATH,
                                       MPL::MPL_DBUS_SERVICE_NAME, QStringLiteral("ListNames"));
    auto* watcher = new QDBusPendingCallWatcher(m_Bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QStringList> names = *watcher;
        watcher->deleteLater();
        if (names.isValid()) {
            for (const QString& name : names.value()) {
                if (IsMediaSource(name) && !m_Services.contains(name)) {
                    LookUp(name);
                }
            }
        }
        EndLookUp();
    });
}

void SourceFinder::OwnerChanged(const QString& aName, const QString& /*oldOwner*/, const QString& aNewOwner)
{
    if (!IsMediaSource(aName)) {
        return;
    }
    Forget(aName);
    if (!aNewOwner.isEmpty()) {
        LookUp(aName);
    }
}

void SourceFinder::ObjectsChanged(const QDBusMessage& aSignal)
{
    for (auto service = m_Services.begin(); service != m_Services.end(); ++service) {
        // Before its first answer the owner is not known; that answer may have been given before the change.
        if (service->owner == aSignal.service() || service->owner.isEmpty()) {
            LookUp(service.key());
        }
    }
}

void SourceFinder::LookUp(const QString& aName)
{
    Service& service = m_Services[aName];
    if (service.inFlight == 0) {
        ++m_LookUps;
    }
    service.lookUp = ++m_LastLookUp;
    service.inFlight = 0;
    service.asked = 0;
    service.found.clear();
    service.time.start();
    Introspect(aName, QStringLiteral("/"));
}

void SourceFinder::Introspect(const QString& aName, const QString& aPath)
{
    Service& service = m_Services[aName];
    ++service.inFlight;
    ++service.asked;
    QDBusMessage call = QDBusMessage::createMethodCall(
        aName, aPath, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    call.setAutoStartService(false);
    const int timeLeft = qMax(1, kLookUpMs - static_cast<int>(service.time.elapsed()));
    auto* watcher = new QDBusPendingCallWatcher(m_Bus.asyncCall(call, timeLeft), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, aName, aPath, lookUp = service.lookUp] {
                const QDBusPendingReply<QString> reply = *watcher;
                watcher->deleteLater();
                const auto asked = m_Services.find(aName);
                if (asked == m_Services.end() || asked->lookUp != lookUp) {
                    return;
                }
                if (reply.isValid()) {
                    asked->owner = reply.reply().service();
                    Read(*asked, aName, aPath, reply.value());
                }
                if (--asked->inFlight == 0) {
                    Finish(aName);
                }
            });
}

void SourceFinder::Read(Service& aService, const QString& aName, const QString& aPath, const QString& aXml)
{
    const QString prefix = aPath == QLatin1String("/") ? aPath : aPath + QLatin1Char('/');
    QXmlStreamReader reader(aXml);
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            ++depth;
            const QString child = reader.attributes().value(QLatin1String("name")).toString();
            if (depth != 2) {
                continue;
            }
            if (reader.name() == QLatin1String("interface") &&
                child == QLatin1String("com.talvex.DBus.MediaPlayer.MediaSource")) {
                aService.found.append(aPath);
            } else if (reader.name() == QLatin1String("node") && !child.isEmpty() &&
                       aService.asked < kMaximumObjects && aService.time.elapsed() < kLookUpMs) {
                Introspect(aName, prefix + child);
            }
        }
    }
}

void SourceFinder::Finish(const QString& aName)
{
    Service& service = m_Services[aName];
    const QStringList before = service.known;
    const QStringList now = service.found;
    service.known = now;
    for (const QString& path : before) {
        if (!now.contains(path)) {
            Q_EMIT Lost(MakeSource(aName, path));
        }
    }
    for (const QString& path : now) {
        if (!before.contains(path)) {
            Q_EMIT Found(MakeSource(aName, path));
        }
    }
    EndLookUp();
}

void SourceFinder::Forget(const QString& aName)
{
    if (!m_Services.contains(aName)) {
        return;
    }
    const Service gone = m_Services.take(aName);
    for (const QString& path : gone.known) {
        Q_EMIT Lost(MakeSource(aName, path));
    }
    if (gone.inFlight > 0) {
        EndLookUp();
    }
}

void SourceFinder::EndLookUp()
{
    if (--m_LookUps == 0) {
        Q_EMIT Settled();
    }
}

} // namespace sim
