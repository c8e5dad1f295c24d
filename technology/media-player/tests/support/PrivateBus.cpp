#include "PrivateBus.h"

#include <QDBusConnection>
#include <QFile>

#include <csignal>
#include <dlfcn.h>
#include <sys/prctl.h>

namespace MPL::Doubles
{

namespace
{

QString s_Redirected;
QString s_Instead;

constexpr int START_LIMIT_MS = 10000;

QByteArray Configuration(const QString& folder)
{
    return QStringLiteral("<busconfig><type>session</type><listen>unix:path=%1/bus</listen>"
                          "<auth>EXTERNAL</auth><policy context=\"default\">"
                          "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow own=\"*\"/>"
                          "</policy></busconfig>")
        .arg(folder)
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
    if (waitForReadyRead(START_LIMIT_MS)) {
        m_Address = QString::fromUtf8(readLine().trimmed());
    } else {
        qCritical("dbus-daemon is not ready: %s %s", qPrintable(errorString()),
                  readAllStandardError().constData());
    }
}

PrivateBus::~PrivateBus()
{
    kill();
    waitForFinished(START_LIMIT_MS);
}

void PrivateBus::Redirect(const QString& address, const QString& instead)
{
    s_Redirected = address;
    s_Instead = instead;
}

void PrivateBus::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace MPL::Doubles

// Takes the place of Qt's own function, and calls it.
QDBusConnection QDBusConnection::connectToBus(const QString& address, const QString& name)
{
    using Function = QDBusConnection (*)(const QString&, const QString&);
    static const Function original =
        reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_ZN15QDBusConnection12connectToBusERK7QStringS2_"));
    const bool redirect = !MPL::Doubles::s_Instead.isEmpty() && address == MPL::Doubles::s_Redirected;
    return original(redirect ? MPL::Doubles::s_Instead : address, name);
}
