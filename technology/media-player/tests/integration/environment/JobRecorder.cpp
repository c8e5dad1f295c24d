#include "JobRecorder.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

namespace
{

const QString SERVICE = QStringLiteral("org.freedesktop.systemd1");
const QString PATH = QStringLiteral("/org/freedesktop/systemd1");
const QString INTERFACE = QStringLiteral("org.freedesktop.systemd1.Manager");

} // namespace

JobRecorder::JobRecorder()
{
    moveToThread(QCoreApplication::instance()->thread());
    QDBusConnection bus = QDBusConnection::systemBus();
    EXPECT_TRUE(bus.connect(SERVICE, PATH, INTERFACE, "JobNew", this,
                            SLOT(OnJobNew(uint, QDBusObjectPath, QString))));
    bus.call(QDBusMessage::createMethodCall(SERVICE, PATH, INTERFACE, "Subscribe"));
}

QStringList JobRecorder::TakeServices()
{
    // An answer from systemd comes after the signals it sent before, and an event of our own after theirs.
    QDBusConnection::systemBus().call(
        QDBusMessage::createMethodCall(SERVICE, PATH, "org.freedesktop.DBus.Peer", "Ping"));
    QMetaObject::invokeMethod(
        this, [] {}, Qt::BlockingQueuedConnection);
    const QMutexLocker locker(&m_Mutex);
    QStringList services;
    services.swap(m_Services);
    return services;
}

void JobRecorder::OnJobNew(uint, const QDBusObjectPath&, const QString& unit)
{
    const QMutexLocker locker(&m_Mutex);
    if (unit.startsWith("media-")) {
        m_Services << QString(unit).remove(".service");
    }
}
