#include "PrivateBus.h"

#include <QDBusConnection>
#include <QFile>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <memory>

namespace MPL::Doubles
{

namespace
{

struct Redirection {
    QString address;
    QString instead;
};

// Test programs redirect from their own static initialisers too.
Redirection& Redirected()
{
    static Redirection s_Redirection;
    return s_Redirection;
}

constexpr int kStartLimitMs = 10000;

QByteArray Configuration(const QString& aFolder)
{
    return QStringLiteral("<busconfig><type>session</type><listen>unix:path=%1/bus</listen>"
                          "<auth>EXTERNAL</auth><policy context=\"default\">"
                          "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow own=\"*\"/>"
                          "</policy></busconfig>")
        .arg(aFolder)
        .toUtf8();
}

class BusOfTheRun : public testing::Environment
{
public:
    void TearDown() override { bus.reset(); }

    std::unique_ptr<PrivateBus> bus = std::make_unique<PrivateBus>();
};

} // namespace

PrivateBus::PrivateBus()
{
    QFile configuration(m_Folder.filePath("bus.conf"));
    if (!configuration.open(QIODevice::WriteOnly)) {
        qCritical("The private bus can't be configured in %s", qPrintable(m_Folder.path()));
        return;
    }
    configuration.write(Configuration(m_Folder.path()));
    configuration.close();

    m_Daemon.start("setpriv", {"--pdeathsig=KILL", "dbus-daemon", "--nofork", "--print-address=1",
                               "--config-file=" + configuration.fileName()});
    if (m_Daemon.waitForReadyRead(kStartLimitMs)) {
        m_Address = QString::fromUtf8(m_Daemon.readLine().trimmed());
    } else {
        qCritical("dbus-daemon is not ready: %s %s", qPrintable(m_Daemon.errorString()),
                  m_Daemon.readAllStandardError().constData());
    }
}

PrivateBus::~PrivateBus()
{
    m_Daemon.kill();
    m_Daemon.waitForFinished(kStartLimitMs);
}

void PrivateBus::Redirect(const QString& aAddress, const QString& aInstead)
{
    Redirected() = {aAddress, aInstead};
}

const PrivateBus& SharedBus()
{
    static const auto* const kRun =
        static_cast<const BusOfTheRun*>(testing::AddGlobalTestEnvironment(new BusOfTheRun));
    return *kRun->bus;
}

} // namespace MPL::Doubles

// Takes the place of Qt's own function, and calls it.
QDBusConnection QDBusConnection::connectToBus(const QString& aAddress, const QString& aName)
{
    using Function = QDBusConnection (*)(const QString&, const QString&);
    static const Function kOriginal =
        reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_ZN15QDBusConnection12connectToBusERK7QStringS2_"));
    const auto& [address, instead] = MPL::Doubles::Redirected();
    return kOriginal(!instead.isEmpty() && aAddress == address ? instead : aAddress, aName);
}
