#include "Surroundings.h"

#include "environment/Constants.h"

#include <QDBusConnection>
#include <QDir>
#include <QFileInfo>

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace MPL
{
namespace
{

bool HasStackPrograms()
{
    return !QDir(MPL_TEST_BINARY_DIRECTORY).entryList(QDir::Files | QDir::Executable).isEmpty();
}

bool DoesTestBusAnswer()
{
    const QString name = QStringLiteral("MPL::IsThereAStack");
    const bool isConnected = QDBusConnection::connectToBus(MPL_TEST_DBUS_ADDRESS, name).isConnected();
    QDBusConnection::disconnectFromBus(name);
    return isConnected;
}

} // namespace

int RunInSandbox(const std::vector<char*>& aArguments)
{
    const QFileInfo self(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    QByteArray program = QFile::encodeName(self.filePath());
    // In a build folder it may lie beside this program; where it is installed PATH has it.
    const QByteArray beside = QFile::encodeName(self.dir().filePath(QStringLiteral("mpl-sandbox")));
    char name[] = "mpl-sandbox";
    char end[] = "--";
    std::vector<char*> command{name, end, program.data()};
    command.insert(command.end(), aArguments.begin() + 1, aArguments.end());
    command.push_back(nullptr);
    execv(beside.constData(), command.data());
    execvp(name, command.data());
    std::fprintf(stderr,
                 "%s: mpl-sandbox can't be run (%s): install the package " MPL_HOST_PACKAGE ", or put the "
                 "folder that holds it into PATH\n",
                 aArguments.front(), std::strerror(errno));
    return 127;
}

bool IsInSandbox()
{
    return qEnvironmentVariableIsSet("MPL_SANDBOX");
}

bool IsThereAStack()
{
    return IsInSandbox() || HasStackPrograms() || DoesTestBusAnswer();
}

} // namespace MPL
