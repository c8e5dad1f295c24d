// A bus and the simulated stack's programs of one test. Everything ends with the test.
#pragma once

#include <MPL_MediaManagerProxy.h>
#include <MPL_Types.h>

#include <QDBusConnection>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using ManagerProxy = ComTalvexDBusMediaPlayerMediaManagerInterface;

class StackTest : public testing::Test
{
protected:
    static const QString kManagerService;
    static const QString kManagerPath;
    static const QString kDatabaseFile;
    /// The media manager's arguments that make it keep its state.
    static const QStringList kDatabase;

    void SetUp() override;
    void TearDown() override;

    /// Faults of the programs started from now on: the value of "programs".
    static void SetFaults(const QByteArray& aPrograms);

    /// Starts a program of /opt/talvex/bin, or at an absolute path.
    QProcess& Start(const QString& aProgram, const QStringList& aArguments);
    /// The same on the private bus, and waits until it owns the name.
    QProcess& StartService(const QString& aProgram, const QString& aName, QStringList aArguments = {});
    QProcess& StartManager(const QStringList& aArguments = {});
    QProcess& StartMassStorage();
    QProcess& StartTestSource(const QStringList& aArguments = {QStringLiteral("31")});

    bool WaitForName(const QString& aName, int aTimeoutMs = 5000);
    /// The exit status, -1 after a crash, -2 when it does not end within five seconds.
    static int ExitStatus(QProcess& aProcess);
    static int Stop(QProcess& aProcess);

    static const MPL::ServiceObject& MassStorage();

    /// The media manager on the private bus, and what tests ask it.
    ManagerProxy& Manager();
    QList<MPL::ServiceObject> Available();
    /// Path of the active source; empty for none.
    QString Active();
    bool BecomesActive(const QString& aPath);
    bool Activate(const MPL::ServiceObject& aSource);

    QProcess m_Daemon;
    QDBusConnection m_Bus{QStringLiteral("not connected")};
    std::unique_ptr<ManagerProxy> m_Manager;
    std::vector<std::unique_ptr<QProcess>> m_Programs;
};
