/// The life of a simulated program: faults, bus, bus name, clean end.
///
///     int main(int argc, char* argv[])
///     {
///         sim::Options options;
///         sim::Program::AddCommonOptions(options);
///         if (const auto status = options.Parse(argc, argv)) { return *status; }
///         sim::Program program(argc, argv, options);
///         return program.Run(sim::BusChoice::ByOption, "com.talvex.…",
///                            [&](const QDBusConnection& aBus) { …create and export… });
///     }
///
/// Exit status: 0 after SIGTERM or SIGINT, 1 when the bus can't be reached or is lost or an object can't be
/// exported, 2 for a wrong command line or faults file, 3 when another process owns the name.
#pragma once

#include "Faults.h"
#include "Options.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QList>

#include <functional>

namespace sim
{

/// Which bus a program speaks on.
enum class BusChoice {
    ByOption,     ///< the test bus with --test-dbus, otherwise the system bus
    WhateverRuns, ///< both the system bus and the test bus, as far as they answer; at least one must
    None          ///< none: the program just runs
};

class Program : public QObject
{
    Q_OBJECT

public:
    /// Exports the program's objects on one bus; returns whether that succeeded. Called before the name is
    /// asked for, once for each bus.
    using ExportObjects = std::function<bool(const QDBusConnection& aBus)>;

    /// Options that every program on a bus takes.
    static void AddCommonOptions(Options& aOptions);

    Program(int& argc, char** argv, const Options& aOptions);

    /// Runs until the end of the process; returns the exit status. An empty `aServiceName` owns no name.
    int Run(BusChoice aChoice, const QString& aServiceName, const ExportObjects& aExportObjects);

    /// Lives as long as the program.
    const FaultPlan& Faults() const { return m_Faults; }

private Q_SLOTS:
    void BusLost();

private:
    void WatchSignals();
    void ArmEnds() const;
    bool Start(BusChoice aChoice, const QString& aServiceName, const ExportObjects& aExportObjects);
    bool Connect(BusChoice aChoice);
    void TakeIn(const QDBusConnection& aBus, const QString& aAddress, QStringList& aFailures);
    bool OwnName(QDBusConnection& aBus, const QString& aServiceName);

    QCoreApplication m_Application;
    FaultPlan m_Faults;
    QString m_FaultsError;
    bool m_TestBus = false;
    QList<QDBusConnection> m_Buses;
    int m_Status = 0;
};

} // namespace sim
