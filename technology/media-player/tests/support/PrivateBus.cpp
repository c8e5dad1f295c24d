#include "PrivateBus.h"

#include <QDBusConnection>
#include <QFile>

#include <dlfcn.h>
#include <sys/prctl.h>

#include <csignal>

namespace MPL::Doubles
{

namespace
{

QString s_Redirected;
QString s_Instead;

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

} // namespace

PrivateBus::PrivateBus()
{
    QFile configuration(m_Folder.filePath(QStringLiteral("bus.conf")));
    if (!configuration.open(QIODevice::WriteOnly)) {
        qCritical("The private bus can't be configured in %s", qPrintable(m_Folder.path()));
        return;
    }
    configuration.write(Configuration(m_Folder.path()));
    configuration.close();

    start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                                          QStringLiteral("--config-file=") + configuration.fileName()});
    if (waitForReadyRead(kStartLimitMs)) {
        m_Address = QString::fromUtf8(readLine().trimmed());
    } else {
        qCritical("dbus-daemon is not ready: %s %s", qPrintable(errorString()),
                  readAllStandardError().constData());
    }
}

PrivateBus::~PrivateBus()
{
    kill();
    waitForFinished(kStartLimitMs);
}

void PrivateBus::Redirect(const QString& aAddress, const QString& aInstead)
{
    s_Redirected = aAddress;
    s_Instead = aInstead;
}

void PrivateBus::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace MPL::Doubles

// Takes the place of Qt's own function, and calls it.
QDBusConnection QDBusConnection::connectToBus(const QString& aAddress, const QString& aName)
{
    using Function = QDBusConnection (*)(const QString&, const QString&);
    static const Function kOriginal =
        reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_ZN15QDBusConnection12connectToBusERK7QStringS2_"));
    const bool redirect = !MPL::Doubles::s_Instead.isEmpty() && aAddress == MPL::Doubles::s_Redirected;
    return kOriginal(redirect ? MPL::Doubles::s_Instead : aAddress, aName);
}
