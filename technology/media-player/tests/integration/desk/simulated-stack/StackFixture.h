/// A bus and the simulated stack's programs of one test. Everything ends with the test, in a sandbox.
#pragma once

#include "WaitUntil.h"
#include <MPL_MediaManagerProxy.h>
#include <MPL_Types.h>

#include <QDBusConnection>
#include <QDBusPendingReply>
#include <QProcess>
#include <QSignalSpy>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using ManagerProxy = ComTalvexDBusMediaPlayerMediaManagerInterface;

/// Waits for a call's reply, and for the signal's n-th time.
template <class Reply>
testing::AssertionResult Succeeds(Reply aReply)
{
    aReply.waitForFinished();
    return testing::AssertionResult(!aReply.isError()) << aReply.error().message().toStdString();
}

inline testing::AssertionResult IsSignalled(const QSignalSpy& aSpy, qint64 aTimes = 1)
{
    return WaitUntil(aSpy.signal(), [&] { return aSpy.count() >= aTimes; })
           << " came " << aSpy.count() << " of " << aTimes << " times";
}

/// The value of a reply that must come without an error.
template <class T>
T Value(QDBusPendingReply<T> aReply)
{
    EXPECT_TRUE(Succeeds(aReply));
    return aReply.value();
}

class StackFixture : public testing::Test
{
protected:
    /// Address of the bus.
    static const QString kBus;
    static const QString kDatabaseFile;
    /// The media manager's arguments that make it keep its state.
    static const QStringList kDatabase;

    void SetUp() override;
    void TearDown() override;

    /// Starts a program of /opt/talvex/bin, or at an absolute path.
    QProcess& Start(const QString& aProgram, const QStringList& aArguments);
    /// The same on the private bus, and waits until it owns the name.
    QProcess& StartService(const QString& aProgram, const QString& aName, QStringList aArguments = {});
    QProcess& StartManager(const QStringList& aArguments = {});
    QProcess& StartMassStorage();
    QProcess& StartTestSource(const QStringList& aArguments = {"31"});

    bool IsOwned(const QString& aName) const;
    /// The exit status, -1 after a crash, -2 when it does not end within five seconds.
    static int ExitStatus(QProcess& aProcess);
    static int Stop(QProcess& aProcess);

    static const MPL::ServiceObject& MassStorage();

    /// The media manager on the private bus, and what tests ask it.
    ManagerProxy& Manager();
    QList<MPL::ServiceObject> Available();
    /// Path of the active source; empty for none.
    QString Active();
    testing::AssertionResult Activate(const MPL::ServiceObject& aSource);

    QProcess m_Daemon;
    QDBusConnection m_Bus{"not connected"};
    std::unique_ptr<ManagerProxy> m_Manager;
    std::vector<std::unique_ptr<QProcess>> m_Programs;
};
