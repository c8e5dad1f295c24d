#include "JobRecorder.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

#include <gtest/gtest.h>

namespace
{

const QString kService = QStringLiteral("org.freedesktop.systemd1");
const QString kPath = QStringLiteral("/org/freedesktop/systemd1");
const QString kInterface = QStringLiteral("org.freedesktop.systemd1.Manager");

} // namespace

JobRecorder::JobRecorder()
{
    moveToThread(QCoreApplication::instance()->thread());
    QDBusConnection bus = QDBusConnection::systemBus();
    EXPECT_TRUE(bus.connect(kService, kPath, kInterface, "JobNew", this,
                            SLOT(OnJobNew(uint, QDBusObjectPath, QString))));
    bus.call(QDBusMessage::createMethodCall(kService, kPath, kInterface, "Subscribe"));
}

QStringList JobRecorder::TakeServices()
{
    // An answer from systemd comes after the signals it sent before, and an event of our own after theirs.
    QDBusConnection::systemBus().call(
        QDBusMessage::createMethodCall(kService, kPath, "org.freedesktop.DBus.Peer", "Ping"));
    QMetaObject::invokeMethod(
        this, [] {}, Qt::BlockingQueuedConnection);
    const QMutexLocker locker(&m_Mutex);
    QStringList services;
    services.swap(m_Services);
    return services;
}

void JobRecorder::OnJobNew(uint, const QDBusObjectPath&, const QString& aUnit)
{
    const QMutexLocker locker(&m_Mutex);
    if (aUnit.startsWith("media-")) {
        m_Services << QString(aUnit).remove(".service");
    }
}
