#include "Surroundings.h"

#include "BusNames.h"
#include "Stack.h"
#include <MPL_TestEnvironment.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace chaos
{
namespace
{

constexpr const char* kFiller = "/var/talvex/filler";
constexpr const char* kConfiguration = "/opt/talvex/etc/mplConfig.json";

void FillDisk(off_t aLeft)
{
    const int file = open(kFiller, O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const QByteArray block(4096, 'x');
    off_t size = 0;
    while (write(file, block.constData(), static_cast<size_t>(block.size())) == block.size()) {
        size += block.size();
    }
    if (ftruncate(file, size > aLeft ? size - aLeft : 0) != 0) {
        std::perror("chaos: the filler can't be cut");
    }
    close(file);
}

void DamageDatabase()
{
    QDir().mkpath(kMPLDefaultEnvironment);
    QFile file(kMPLDataManagerDb);
    if (file.open(QIODevice::ReadWrite)) {
        file.write(QByteArray(100, '?')); // where the header is
    }
}

void CutConfiguration()
{
    QFile file{QLatin1String(kConfiguration)};
    if (!QFile::exists(file.fileName() + QStringLiteral(".whole"))) {
        QFile::copy(file.fileName(), file.fileName() + QStringLiteral(".whole"));
        file.resize(file.size() / 2);
    }
}

void MendConfiguration()
{
    const QString name = QLatin1String(kConfiguration);
    if (QFile::exists(name + QStringLiteral(".whole"))) {
        QFile::remove(name);
        QFile::rename(name + QStringLiteral(".whole"), name);
    }
}

// Starts who takes the name, and waits until he has it or can't.
void TakeName(const QByteArray& aAddress, const QString& aName, const char* aManner)
{
    // Ends with the sandbox.
    auto* accomplice = new QProcess;
    accomplice->start(QCoreApplication::applicationDirPath() + QStringLiteral("/mpl_chaos_accomplice"),
                      {QString::fromLatin1(aAddress), aName, QLatin1String(aManner)});
    accomplice->waitForReadyRead(60000);
}

} // namespace

void Change(const Step& aStep, bool aTestBus)
{
    const QByteArray systemBus = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    const QString lifecycleManager = QStringLiteral("org.freedesktop.systemd1");
    switch (aStep.action) {
    case Action::NameIsTaken:
        return TakeName(aTestBus ? kTestBus : systemBus, ServiceOf(aStep.object), "mute");
    case Action::LifecycleManagerRefuses:
        return TakeName(systemBus, lifecycleManager, "refuse");
    case Action::LifecycleManagerIsMute:
        return TakeName(systemBus, lifecycleManager, "mute");
    case Action::DatabaseIsDamaged:
        return DamageDatabase();
    case Action::ConfigurationIsDamaged:
        return CutConfiguration();
    case Action::ConfigurationIsWhole:
        return MendConfiguration();
    case Action::DiskIsFull:
        return FillDisk(aStep.milliseconds);
    default:
        QFile::remove(QLatin1String(kFiller));
    }
}

} // namespace chaos
